#include "ZNTWindowFixture.h"

/// With a browser that only notes what it is given.
class ZNTWindowWebAddresses : public ZNTWindowFixture
{
protected:
    ZNTWindowWebAddresses()
    {
        QObject::connect(&browser, &QTextBrowser::anchorClicked, &browser,
                         [this](const QUrl& url) { opened << QString::fromLatin1(url.toEncoded()); });
        for (const auto& scheme : {u"http"_s, u"https"_s})
            QDesktopServices::setUrlHandler(scheme, &browser, "anchorClicked");
        ZNTAttributedText text;
        text.text =
            u"http://old.example/a%0Ab?x=1&y\nhttps://b\u0430nk.example/\u0436 http://user@a.example\n"
            u"http://a..b.example\n";
        window.textFromServer->append(text);
    }
    ~ZNTWindowWebAddresses() override
    {
        for (const auto& scheme : {u"http"_s, u"https"_s})
            QDesktopServices::unsetUrlHandler(scheme);
    }

    QTextBrowser browser;
    QStringList opened;
};

TEST_F(ZNTWindowWebAddresses, AnEmptyListSaysWhyInThePlaceOfItsRows)
{
    window.textFromServer->clear();
    QDialog& list = open("openWebAddress", "webAddresses");
    EXPECT_EQ(find<QListWidget>(list, "addresses").accessibleDescription(),
              u"There is no web address in the last 500 lines."_s);
    EXPECT_FALSE(find<QLabel>(list, "words").isVisible());
}

TEST_F(ZNTWindowWebAddresses, TheOneThatIsPickedIsShownWholeAndOpenedExactlyAsShown)
{
    const QStringList shown{u"http://user@a.example"_s, u"https://xn--bnk-6cd.example/%D0%B6"_s,
                            u"http://old.example/a%0Ab?x=1&y"_s};
    QStringList asked;
    for (int row = 0; row < shown.size(); ++row) {
        for (const Qt::Key answer : {Qt::Key_Escape, Qt::Key_Return}) {
            EXPECT_TRUE(until([&] { return window.isActiveWindow(); })) << "the player goes on";
            press(commandLine(), Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
            const auto& list = find<QListWidget>(waitForDialog("webAddresses"), "addresses");
            ASSERT_EQ(list.count(), shown.size());
            for (int down = 0; down < row; ++down)
                pressHere(Qt::Key_Down);
            EXPECT_EQ(list.currentItem()->text(), shown[row]);
            pressHere(Qt::Key_Return);
            QDialog& question = waitForDialog("webAddressQuestion");
            EXPECT_EQ(find<QPlainTextEdit>(question, "webAddress").toPlainText(), shown[row]);
            asked << find<QLabel>(question, "words").text();
            EXPECT_EQ(opened, shown.first(row)) << "before the answer";
            pressHere(answer);
            EXPECT_TRUE(until([] { return dialog("webAddressQuestion") == nullptr; }));
        }
        EXPECT_EQ(opened, shown.first(row + 1));
    }
    EXPECT_TRUE(asked[0].contains(u" a.example "_s)) << "the site, not the name before it";
    EXPECT_TRUE(asked[2].contains(u" xn--bnk-6cd.example "_s));
}

TEST_F(ZNTWindowWebAddresses, TheTimeOfALineIsSpokenAlsoWhileSpeechIsOff)
{
    press(commandLine(), Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(until([&] {
        return !speech.said.empty() && speech.said.back().ends_with(", http://a..b.example");
    })) << "the last line";
}
