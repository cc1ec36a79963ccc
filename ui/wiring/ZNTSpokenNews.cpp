#include "ZNTSpokenNews.h"

#include "ZNTServerConnectController.h"
#include "ZNTSpeechSynth.h"

#include <string>

void ZNTSpokenNews::say(std::u16string_view news)
{
    if (session.speechOnOffBindingState() == 1)
        session.zntSpeechSynth().speakNext(news);
}

void ZNTSpokenNews::sayDone(std::u16string_view what)
{
    std::u16string news(what);
    if (!session.isConnected())
        news += what.empty() ? u"Not connected" : u". Not connected";
    say(news);
}
