#include "ZNTStatusLine.h"

#include "ZNTMudAppController.h"
#include "ZNTQtText.h"
#include "ZNTRecorder.h"
#include "ZNTSoundFactory.h"

#include <QLabel>

ZNTStatusLine::ZNTStatusLine(QLabel& label, ZNTMudAppController& controller)
    : label(label),
      controller(controller)
{
}

void ZNTStatusLine::sessionChanged(ZNTSessionChange what)
{
    switch (what) {
    case ZNTSessionChange::State:
    case ZNTSessionChange::Compression:
        takeState();
        break;
    case ZNTSessionChange::Recording:
        takeRecording();
        break;
    case ZNTSessionChange::Walking:
        facts_.isWalking = controller.serverConnectController().isWalking();
        facts_.runningRecording = znt::qtText(controller.serverConnectController().runningRecording());
        break;
    case ZNTSessionChange::Speech:
        takeSpeech();
        break;
    case ZNTSessionChange::Sounds:
        facts_.isMuted = controller.services().sounds.isMuted();
        break;
    case ZNTSessionChange::Title:
    case ZNTSessionChange::Encoding:
    case ZNTSessionChange::Typing:
        return;
    }
    show();
}

void ZNTStatusLine::showNotice(const ZNTSessionNotice& notice)
{
    if (notice.kind == ZNTSessionNotice::Kind::End)
        return; // the words of the state say it, with the time
    facts_.notice = znt::qtText(notice.sentence);
    isNoticeAHint = notice.kind == ZNTSessionNotice::Kind::Hint;
    show();
}

void ZNTStatusLine::endNotice(const ZNTSessionNotice& notice)
{
    if (facts_.notice != znt::qtText(notice.sentence))
        return;
    facts_.notice.clear();
    show();
}

void ZNTStatusLine::setTimeSeen(bool isSeen)
{
    facts_.isTimeSeen = isSeen;
    show();
}

QString ZNTStatusLine::words() const
{
    ZNTStatusFacts all = facts_;
    all.isTimeSeen = false;
    return znt::statusInWords(all);
}

void ZNTStatusLine::takeState()
{
    using Connection = ZNTStatusFacts::Connection;
    const auto& session = controller.serverConnectController();
    switch (session.state()) {
    case ZNTSessionState::Idle:
        facts_.connection = Connection::None;
        if (isNoticeAHint)
            facts_.notice.clear();
        break;
    case ZNTSessionState::Connecting:
        facts_.notice.clear();
        facts_.connection = Connection::Connecting;
        break;
    case ZNTSessionState::Connected:
        facts_.connection = Connection::Connected;
        break;
    }
    facts_.game = facts_.connection == Connection::None ? QString() : controller.playedGame();
    facts_.connectedSince = session.connectedSince();
    facts_.ending = znt::qtText(znt::inWords(session.lastEnd()));
    facts_.hasGameSettings =
        facts_.connection == Connection::Connected && controller.settings().hasSettingsForGame();
    facts_.isCompressed = facts_.connection == Connection::Connected && session._mccp();
}

void ZNTStatusLine::takeRecording()
{
    const auto state = controller.serverConnectController().recorder()._recorderState();
    facts_.isRecording = state == 1;
    facts_.isRecordingPaused = state == 2;
}

void ZNTStatusLine::takeSpeech()
{
    const auto& session = controller.serverConnectController();
    facts_.isSpeechOn = session.speechOnOffBindingState() == 1;
    facts_.isSpeechAvailable = session.isSpeechAvailable();
}

/// A line that is left as it is must not be announced to screen readers again.
void ZNTStatusLine::show()
{
    const QString status = znt::statusInWords(facts_);
    if (status == label.text())
        return;
    label.setText(status);
    label.setAccessibleName(QStringLiteral("Status: ") + status);
}
