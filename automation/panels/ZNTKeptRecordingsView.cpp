#include "ZNTKeptRecordingsView.h"

#include "ZNTText.h"

#include <utility>

ZNTKeptRecordingsView::ZNTKeptRecordingsView(Elements elements, ZNTKeptRecordings& kept, ZNTAlert& alert,
                                             Session session)
    : elements(elements),
      kept(kept),
      alert(alert),
      session(std::move(session))
{
}

void ZNTKeptRecordingsView::reload()
{
    shown = kept.all();
    elements.recordings.reloadData();
    elements.commands.reloadData();
}

// The buttons

void ZNTKeptRecordingsView::run(ZNTReplay::Times times)
{
    if (const auto* recording = selectedOrSaid(); recording && !session.run(*recording, times))
        session.say(u"Not connected, so nothing was run.");
}

void ZNTKeptRecordingsView::removeRecording()
{
    const auto* recording = selectedOrSaid();
    if (!recording)
        return;
    alert.askForConfirmation(u"Remove the recording " + recording->name + u"?", u"It cannot be brought back.",
                             [this, name = recording->name](bool isConfirmed) {
                                 if (!isConfirmed)
                                     return;
                                 const auto removed = kept.remove(name);
                                 reload();
                                 if (removed)
                                     session.say(u"The recording " + name + u" is removed.");
                                 else
                                     sayError(removed.error());
                             });
}

void ZNTKeptRecordingsView::addCommand()
{
    const auto* recording = selectedOrSaid();
    if (!recording)
        return;
    auto changed = *recording;
    changed.commands.emplace_back(u"New Command");
    if (store(recording->name, changed))
        elements.commands.scrollToEndOfTable();
}

void ZNTKeptRecordingsView::deleteCommand()
{
    const auto* recording = selectedOrSaid();
    if (!recording)
        return;
    const long row = elements.commands.selectedRow();
    elements.commands.abortEditing();
    if (!hasCommand(row)) {
        session.say(u"No command is selected.");
        return;
    }
    auto changed = *recording;
    changed.commands.erase(changed.commands.begin() + row);
    store(recording->name, changed);
}

// The tables

std::u16string ZNTKeptRecordingsView::recordingValue(std::string_view column, long row) const
{
    if (row < 0 || row >= numberOfRecordings())
        return {};
    const auto& recording = shown[static_cast<std::size_t>(row)];
    return column == nameColumn ? recording.name : znt::secondsText(recording.seconds);
}

std::u16string ZNTKeptRecordingsView::recordingInWords(long row) const
{
    return row < 0 || row >= numberOfRecordings()
               ? std::u16string()
               : znt::recordingInWords(shown[static_cast<std::size_t>(row)]);
}

void ZNTKeptRecordingsView::setRecordingValue(std::u16string_view value, std::string_view column, long row)
{
    if (row < 0 || row >= numberOfRecordings() || value == recordingValue(column, row))
        return;
    auto changed = shown[static_cast<std::size_t>(row)];
    const auto before = changed.name;
    if (column == nameColumn) {
        changed.name = znt::trimmedOfWhitespace(value);
    } else {
        const auto seconds = znt::secondsTyped(value);
        if (!seconds) {
            sayError(seconds.error());
            return;
        }
        changed.seconds = seconds.value();
    }
    store(before, changed);
}

long ZNTKeptRecordingsView::numberOfCommands() const
{
    const auto* recording = selected();
    return recording ? static_cast<long>(recording->commands.size()) : 0;
}

std::u16string ZNTKeptRecordingsView::command(long row) const
{
    return hasCommand(row) ? selected()->commands[static_cast<std::size_t>(row)] : std::u16string();
}

void ZNTKeptRecordingsView::setCommand(std::u16string_view value, long row)
{
    if (!hasCommand(row) || value == command(row))
        return;
    auto changed = *selected();
    changed.commands[static_cast<std::size_t>(row)] = value;
    store(changed.name, changed);
}

const ZNTKeptRecording* ZNTKeptRecordingsView::selected() const
{
    const long row = elements.recordings.selectedRow();
    return row < 0 || row >= numberOfRecordings() ? nullptr : &shown[static_cast<std::size_t>(row)];
}

const ZNTKeptRecording* ZNTKeptRecordingsView::selectedOrSaid() const
{
    const auto* recording = selected();
    if (!recording)
        session.say(noneSelected);
    return recording;
}

bool ZNTKeptRecordingsView::store(std::u16string_view name, const ZNTKeptRecording& changed)
{
    const auto stored = kept.change(name, changed);
    reload();
    if (!stored)
        sayError(stored.error());
    return stored.succeeded();
}

void ZNTKeptRecordingsView::sayError(const ZNTError& error) const
{
    session.say(znt::textFromUtf8(error.description));
}
