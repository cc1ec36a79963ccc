#include "ZNTCommandRecorderView.h"

#include "ZNTText.h"

#include <utility>

ZNTCommandRecorderView::~ZNTCommandRecorderView()
{
    if (_theDataSource_)
        _theDataSource_->set_tableView(nullptr);
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
    _theDataSource_->set_tableView(&elements._theTableView);
    elements._theTableView.reloadData();
}

void ZNTCommandRecorderView::addEmptyRow()
{
    if (_theDataSource_)
        _theDataSource_->addEmptyRow();
}

void ZNTCommandRecorderView::removeItem()
{
    if (_theDataSource_)
        _theDataSource_->removeItem();
}

void ZNTCommandRecorderView::clearList()
{
    if (_theDataSource_)
        _theDataSource_->clearCommandsList();
}

void ZNTCommandRecorderView::saveToDatabase()
{
    if (!_theDataSource_)
        return;
    _autoCommands_._name = elements._aliasName.text();
    _autoCommands_._commands = _theDataSource_->_dataObjects();
    _autoCommands_._secondsBetweenSendingCommand =
        znt::integerValue(elements._secondsBetweenSendingCommands.text());
    log.log("OBJ: " + _autoCommands_.description());
    _theDataSource_->clearCommandsList(); // and so the record's, for they are one list
}
