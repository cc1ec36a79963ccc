#pragma once

#include "ZNTCommandRecorderDataSource.h"

#include <cstdint>
#include <memory>

/// Notes the lines that the player types while recording is on.
class ZNTRecorder
{
public:
    /// The numbers are the system's own; 3 is skipped.
    enum State : std::int32_t { Finished = 0, Recording = 1, Paused = 2, Fresh = 4 };

    /// Pauses if it records, else starts to record. The commands recorded so far stay.
    void startOrPauseRecording();
    void doneRecording() { recorderState = Finished; }
    /// Replaces the list by a new, empty one. Kept as part of the interface: a fresh start of the recorder.
    void resetRecorder();

    /// Keeps the command if it records; an empty one, too.
    void addCommand(std::u16string_view command);
    /// Kept as part of the interface, like the list's operation of this name.
    void removeCommand(std::u16string_view command) { textRecorderBean->removeCommand(command); }
    void clearCommandsList() { textRecorderBean->clearCommandsList(); }
    [[nodiscard]] ZNTCommandRecorderDataSource::Commands getACopyOfTheCommands() const
    {
        return textRecorderBean->getACopyOfTheCommands();
    }
    /// Does nothing: recorded commands are not stored. Kept as part of the interface: the place where storing
    /// them would begin.
    void saveCommands() {}

    [[nodiscard]] ZNTCommandRecorderDataSource& _textRecorderBean() const { return *textRecorderBean; }
    [[nodiscard]] std::int32_t _recorderState() const { return recorderState; }
    /// Kept as part of the interface: the setter of `recorderState`.
    void set_recorderState(std::int32_t state) { recorderState = state; }

private:
    std::int32_t recorderState = Fresh;
    std::unique_ptr<ZNTCommandRecorderDataSource> textRecorderBean =
        std::make_unique<ZNTCommandRecorderDataSource>();
};
