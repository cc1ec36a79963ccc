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

    /// Recording pauses, and everything else starts to record; what is recorded already stays.
    void startOrPauseRecording();
    void doneRecording() { recorderState = Finished; }
    /// Drops the list for a new, empty one.
    void resetRecorder();

    /// Kept only while recording; an empty line too.
    void addCommand(std::u16string_view command);
    void removeCommand(std::u16string_view command) { textRecorderBean->removeCommand(command); }
    void clearCommandsList() { textRecorderBean->clearCommandsList(); }
    [[nodiscard]] ZNTCommandRecorderDataSource::Commands getACopyOfTheCommands() const
    {
        return textRecorderBean->getACopyOfTheCommands();
    }
    /// Recorded commands are not stored.
    void saveCommands() {}

    [[nodiscard]] ZNTCommandRecorderDataSource& _textRecorderBean() const { return *textRecorderBean; }
    [[nodiscard]] std::int32_t _recorderState() const { return recorderState; }
    void set_recorderState(std::int32_t state) { recorderState = state; }

private:
    std::int32_t recorderState = Fresh;
    std::unique_ptr<ZNTCommandRecorderDataSource> textRecorderBean =
        std::make_unique<ZNTCommandRecorderDataSource>();
};
