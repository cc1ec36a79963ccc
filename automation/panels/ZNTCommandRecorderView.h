#pragma once

#include "ZNTAutoCommands.h"
#include "ZNTCommandRecorderDataSource.h"
#include "ZNTKeptRecordings.h"
#include "ZNTPlatformLog.h"
#include "ZNTScreenElements.h"

/// The sheet in which the player reviews, edits and names recorded commands.
class ZNTCommandRecorderView
{
public:
    struct Elements {
        ZNTTableView& _theTableView;
        ZNTTextField& _aliasName;
        ZNTTextField& _secondsBetweenSendingCommands;
        ZNTPanel& theSheet;
    };

    /// The elements and the log outlive the sheet.
    ZNTCommandRecorderView(Elements elements, ZNTPlatformLog& log) : elements(elements), log(log) {}
    ~ZNTCommandRecorderView();
    ZNTCommandRecorderView(const ZNTCommandRecorderView&) = delete;
    ZNTCommandRecorderView& operator=(const ZNTCommandRecorderView&) = delete;

    /// Shows and edits this very list, which outlives the sheet or is replaced.
    void set_theDataSource(ZNTCommandRecorderDataSource& dataSource);
    /// Shows an existing record; the list becomes its commands. Kept as part of the interface: for records
    /// that were stored, as soon as there are some.
    void buildUIFromDatabaseObjectForUpdate(ZNTAutoCommands record);

    void showWindow() { elements.theSheet.show(); }
    void closeSheet() { elements.theSheet.close(); }

    // The buttons. Without a list they do nothing.
    void addEmptyRow();
    void removeItem();
    void clearList();
    void cancelEditing() { closeSheet(); }
    /// Saves what the sheet shows; the sheet stays open.
    void saveToDatabase();

    /// Keeps a copy of the list under the name in the sheet; nothing else changes. Returns a sentence for the
    /// player that says what is kept, or what was wrong.
    [[nodiscard]] std::u16string keep(ZNTKeptRecordings& kept) const;

    /// Fills `record` with the name, the commands and the number at the start of `seconds`, writes it to the
    /// log and empties the list. The terminal client, which has no sheet, saves with it.
    static void save(ZNTAutoCommands& record, ZNTCommandRecorderDataSource& commands,
                     std::u16string_view name, std::u16string_view seconds, ZNTPlatformLog& log);

    // Kept as part of the interface: the sheet's record and its list.
    [[nodiscard]] const ZNTAutoCommands& _autoCommands() const { return _autoCommands_; }
    [[nodiscard]] ZNTCommandRecorderDataSource* _theDataSource() const { return _theDataSource_; }

private:
    void buildViewData();

    Elements elements;
    ZNTPlatformLog& log;
    ZNTCommandRecorderDataSource* _theDataSource_ = nullptr;
    ZNTAutoCommands _autoCommands_;
};
