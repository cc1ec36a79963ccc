#include "ZNTRecorder.h"

void ZNTRecorder::startOrPauseRecording()
{
    switch (recorderState) {
    case Finished:
    case Paused:
    case Fresh:
        recorderState = Recording;
        break;
    case Recording:
        recorderState = Paused;
        break;
    default:
        break;
    }
}

void ZNTRecorder::resetRecorder()
{
    textRecorderBean = std::make_unique<ZNTCommandRecorderDataSource>();
    recorderState = Fresh;
}

void ZNTRecorder::addCommand(std::u16string_view command)
{
    if (recorderState == Recording)
        textRecorderBean->addCommand(command);
}
