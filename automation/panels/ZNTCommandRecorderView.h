#pragma once

#include "ZNTAutoCommands.h"
#include "ZNTCommandRecorderDataSource.h"
#include "ZNTPlatformLog.h"
#include "ZNTScreenElements.h"

/// The sheet in which recorded commands are reviewed, edited and named.
class ZNTCommandRecorderView
{
public:
    struct Elements {
        ZNTTableView& _theTableView;
        ZNTTextField& _aliasName;
        ZNTTextField& _secondsBetweenSendingCommands;
        ZNTPanel& theSheet;
    };

    /// Everything outlives the sheet.
    ZNTCommandRecorderView(Elements elements, ZNTPlatformLog& log) : elements(elements), log(log) {}
    ~ZNTCommandRecorderView();
    ZNTCommandRecorderView(const ZNTCommandRecorderView&) = delete;
    ZNTCommandRecorderView& operator=(const ZNTCommandRecorderView&) = delete;

    /// Shows and edits this very list, which outlives the sheet or is replaced.
    void set_theDataSource(ZNTCommandRecorderDataSource& dataSource);
    /// Shows an existing record; the list becomes its commands.
    void buildUIFromDatabaseObjectForUpdate(ZNTAutoCommands record);

    void showWindow() { elements.theSheet.show(); }
    void closeSheet() { elements.theSheet.close(); }

    // The buttons; without a list they do nothing.
    void addEmptyRow();
    void removeItem();
    void clearList();
    void cancelEditing() { closeSheet(); }
    /// Fills the record, writes it to the platform's log and empties the list; the sheet stays open.
    void saveToDatabase();

    [[nodiscard]] const ZNTAutoCommands& _autoCommands() const { return _autoCommands_; }
    [[nodiscard]] ZNTCommandRecorderDataSource* _theDataSource() const { return _theDataSource_; }

private:
    void buildViewData();

    Elements elements;
    ZNTPlatformLog& log;
    ZNTCommandRecorderDataSource* _theDataSource_ = nullptr;
    ZNTAutoCommands _autoCommands_;
};
