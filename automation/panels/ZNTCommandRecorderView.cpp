#include "ZNTCommandRecorderView.h"

#include "ZNTText.h"

#include <utility>

ZNTCommandRecorderView::~ZNTCommandRecorderView()
{
    if (_theDataSource_)
        _theDataSource_->listChanged = nullptr;
}

void ZNTCommandRecorderView::set_theDataSource(ZNTCommandRecorderDataSource& dataSource)
{
    _theDataSource_ = &dataSource;
    buildViewData();
}

void ZNTCommandRecorderView::buildUIFromDatabaseObjectForUpdate(ZNTAutoCommands record)
{
    _autoCommands_ = std::move(record);
    if (!_theDataSource_)
        return;
    _theDataSource_->set_dataObjects(_autoCommands_._commands);
    buildViewData();
}

void ZNTCommandRecorderView::buildViewData()
{
    _theDataSource_->listChanged = [this] { elements._theTableView.reloadData(); };
    elements._theTableView.reloadData();
}

void ZNTCommandRecorderView::addEmptyRow()
{
    if (!_theDataSource_)
        return;
    _theDataSource_->addEmptyRow();
    elements._theTableView.scrollToEndOfTable();
}

void ZNTCommandRecorderView::removeItem()
{
    if (!_theDataSource_)
        return;
    const long row = elements._theTableView.selectedRow();
    elements._theTableView.abortEditing();
    _theDataSource_->removeItem(row);
}

void ZNTCommandRecorderView::clearList()
{
    if (_theDataSource_)
        _theDataSource_->clearCommandsList();
}

void ZNTCommandRecorderView::saveToDatabase()
{
    if (_theDataSource_)
        save(_autoCommands_, *_theDataSource_, elements._aliasName.text(),
             elements._secondsBetweenSendingCommands.text(), log);
}

std::u16string ZNTCommandRecorderView::keep(ZNTKeptRecordings& kept) const
{
    const auto commands =
        _theDataSource_ ? _theDataSource_->getACopyOfTheCommands() : ZNTCommandRecorderDataSource::Commands();
    const auto done =
        kept.keep(elements._aliasName.text(), elements._secondsBetweenSendingCommands.text(), commands);
    return done ? done.value() : znt::textFromUtf8(done.error().description);
}

void ZNTCommandRecorderView::save(ZNTAutoCommands& record, ZNTCommandRecorderDataSource& commands,
                                  std::u16string_view name, std::u16string_view seconds, ZNTPlatformLog& log)
{
    record._name = name;
    record._commands = commands._dataObjects();
    record._secondsBetweenSendingCommand = znt::integerValue(seconds);
    log.log("OBJ: " + record.description());
    commands.clearCommandsList(); // the record's commands are this list, so they are empty now, too
}
