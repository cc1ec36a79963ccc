#pragma once

#include "ZNTAlert.h"
#include "ZNTKeptRecordings.h"
#include "ZNTReplay.h"
#include "ZNTScreenElements.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The window of the kept recordings: a table of them, and a table of the selected one's commands. Each edit
/// is stored at once. If that fails, the tables show what is stored, and a sentence says why.
class ZNTKeptRecordingsView
{
public:
    struct Elements {
        ZNTTableView& recordings;
        ZNTTableView& commands;
    };
    /// What the window asks of the session. `say` shows the player a sentence; all three are set.
    struct Session {
        std::function<bool(const ZNTKeptRecording&, ZNTReplay::Times)> run; ///< false without a connection
        std::function<void()> stop;
        std::function<void(std::u16string_view sentence)> say;
    };

    /// All outlive this.
    ZNTKeptRecordingsView(Elements elements, ZNTKeptRecordings& kept, ZNTAlert& alert, Session session);

    /// Reads what is kept, and shows it. To be called whenever the window is shown.
    void reload();
    /// Another recording is selected in the table, or none.
    void selectionChanged() { elements.commands.reloadData(); }

    // The buttons. Without a selection they say so.
    void run(ZNTReplay::Times times);
    void stop() { session.stop(); }
    /// Asks before.
    void removeRecording();
    void addCommand();
    void deleteCommand();

    static constexpr std::u16string_view noneSelected = u"No recording is selected.";

    // The tables' questions. Texts are empty for rows that are not there.
    static constexpr std::string_view nameColumn = "name", secondsColumn = "seconds";
    [[nodiscard]] long numberOfRecordings() const { return static_cast<long>(shown.size()); }
    [[nodiscard]] std::u16string recordingValue(std::string_view column, long row) const;
    void setRecordingValue(std::u16string_view value, std::string_view column, long row);
    /// "hunt: 3 commands, 1 second between them".
    [[nodiscard]] std::u16string recordingInWords(long row) const;
    [[nodiscard]] long numberOfCommands() const;
    [[nodiscard]] std::u16string command(long row) const;
    void setCommand(std::u16string_view value, long row);

private:
    [[nodiscard]] const ZNTKeptRecording* selected() const;
    /// The same, but says so if none is selected.
    [[nodiscard]] const ZNTKeptRecording* selectedOrSaid() const;
    [[nodiscard]] bool hasCommand(long row) const { return row >= 0 && row < numberOfCommands(); }
    /// Stores the recording of that name, and shows what is stored then. Whether it was stored.
    bool store(std::u16string_view name, const ZNTKeptRecording& changed);
    void sayError(const ZNTError& error) const;

    Elements elements;
    ZNTKeptRecordings& kept;
    ZNTAlert& alert;
    Session session;
    std::vector<ZNTKeptRecording> shown; ///< as they were last read
};
