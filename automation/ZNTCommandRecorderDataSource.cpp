#include "ZNTCommandRecorderDataSource.h"

#include <utility>

void ZNTCommandRecorderDataSource::set_dataObjects(std::shared_ptr<Commands> commands)
{
    _dataObjects_ = std::move(commands);
    redisplay();
}

void ZNTCommandRecorderDataSource::addCommand(std::u16string_view command)
{
    _dataObjects_->emplace_back(command);
    redisplay();
}

void ZNTCommandRecorderDataSource::removeCommand(std::u16string_view command)
{
    std::erase(*_dataObjects_, command);
    redisplay();
}

void ZNTCommandRecorderDataSource::clearCommandsList()
{
    _dataObjects_->clear();
    redisplay();
}

void ZNTCommandRecorderDataSource::addEmptyRow() { addCommand(u"New Command"); }

void ZNTCommandRecorderDataSource::removeItem(long row)
{
    if (!hasRow(row))
        return;
    _dataObjects_->erase(_dataObjects_->begin() + row);
    redisplay();
}

std::u16string ZNTCommandRecorderDataSource::tableViewObjectValue(long row) const
{
    return hasRow(row) ? (*_dataObjects_)[static_cast<std::size_t>(row)] : std::u16string();
}

void ZNTCommandRecorderDataSource::tableViewSetObjectValue(std::u16string_view value, long row)
{
    if (hasRow(row))
        (*_dataObjects_)[static_cast<std::size_t>(row)] = value;
}

void ZNTCommandRecorderDataSource::redisplay()
{
    if (listChanged)
        listChanged();
}
