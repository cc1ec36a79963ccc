#include "ZNTKeptLooks.h"
#include "ZNTWindowFixture.h"

#include <gmock/gmock.h>

namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* settingsFile = "Library/Zantor/settings.plist";

TEST(ZNTWindowPlace, IsBroughtIntoSightOnlyWhereNoScreenShowsIt)
{
    const QRect left(0, 0, 1000, 800);
    const QRect right(1000, 0, 1600, 1000);
    const QRect free(0, 20, 1000, 780); // below the title bar
    using Row = std::tuple<const char*, QList<QRect>, QRect, QRect>;
    for (const auto& [what, screens, place, expected] :
         {Row{"wholly seen", {left}, {0, 0, 1000, 800}, {0, 0, 1000, 800}},
          {"over two screens", {left, right}, {900, 100, 400, 300}, {900, 100, 400, 300}},
          {"the right screen is gone", {left}, {1400, 100, 500, 300}, {500, 100, 500, 300}},
          {"most of it on the right", {left, right}, {990, 900, 500, 300}, {1000, 700, 500, 300}},
          {"left of and above all", {left, right}, {-700, -500, 300, 200}, {0, 20, 300, 200}},
          {"larger than the screen", {left}, {-50, -50, 3000, 2000}, free},
          {"far away", {left}, {99999, -99999, 99999, 99999}, free},
          {"no screen at all", {}, {5, 5, 10, 10}, {5, 5, 10, 10}}})
        EXPECT_EQ(znt::broughtIntoSight(place, screens, 20), expected) << what;
}

TEST(ZNTWindowPlace, OnlyATextThatSaysAPlaceIsOne)
{
    for (const ZNTWindowPlace& place :
         {ZNTWindowPlace{{-20, 40, 900, 700}, true}, {{0, -5, 1, 99999}, false}})
        EXPECT_EQ(znt::placeIn(znt::textOfPlace(place)), place);
    for (const char* text : {"", "on", "900x700", "0x700 at 1,2", "-9x700 at 1,2", "900x700 at 1,2 ",
                             "900x700 at 1,2 maximised\n", "999999x9 at 1,2", "9x9 at 1,2,3"})
        EXPECT_EQ(znt::placeIn(text), std::nullopt) << text;
}

/// Two starts of the program, each with a window of its own, in the home of the fixture.
class ZNTWindowDesktop : public ZNTWindowFixture
{
protected:
    struct Run {
        explicit Run(const ZNTWindowServices& services) : parts(window, services)
        {
            window.show();
            EXPECT_TRUE(QTest::qWaitForWindowExposed(&window, patience));
        }
        ZNTMainWindow window;
        ZNTApplicationWindow parts;
    };

    ZNTWindowDesktop()
    {
        window.hide(); // each start has its own
        window.textFromServer->disconnect();
        parts.reset();
    }
    ~ZNTWindowDesktop() override { QApplication::setFont(fontBefore); }

    std::unique_ptr<Run> start() { return std::make_unique<Run>(services()); }
    [[nodiscard]] std::string kept() const { return home.read(settingsFile); }
    static bool panelIsShown(Run& run) { return find<QWidget>(run.window, "sidePanel").isVisible(); }
    static void change(Run& run)
    {
        auto& output = *run.window.textFromServer;
        run.window.setGeometry(20, 50, 1000, 560);
        output.setTextFont(QFont(u"DejaVu Sans Mono"_s, 9));
        output.setPointSize(10); // 80 columns and the panel have room
        for (const ZNTActionName name : std::initializer_list<ZNTActionName>{
                 "darkColours", "readableColours", "keypadWalks", "showSidePanel", "controlsLarger"})
            run.parts.menu[name]->trigger();
        run.window.choosePanelWidth(300);
    }

    const QFont fontBefore = QApplication::font();
};

TEST_F(ZNTWindowDesktop, ComesBackAsThePlayerLeftItOnlyIfAsked)
{
    auto first = start();
    const auto usual = first->window.size();
    const double controls = QApplication::font().pointSizeF();
    change(*first);
    first.reset();
    EXPECT_FALSE(home.has(settingsFile));

    QApplication::setFont(fontBefore);
    auto second = start();
    EXPECT_EQ(second->window.size(), usual);
    change(*second);
    second->parts.controller.settings().setRemembering(true); // what was changed before counts, too
    second.reset();

    QApplication::setFont(fontBefore);
    auto third = start();
    const auto& output = *third->window.textFromServer;
    EXPECT_EQ(third->window.geometry(), QRect(20, 50, 1000, 560));
    EXPECT_EQ(output.textFont().families().value(0), u"DejaVu Sans Mono"_s);
    EXPECT_EQ(output.textFont().pointSizeF(), 9);
    EXPECT_EQ(output.pointSize(), 10);
    EXPECT_EQ(QApplication::font().pointSizeF(), controls + 2);
    EXPECT_EQ(QApplication::palette(), ZNTAppearance::dark());
    EXPECT_TRUE(third->parts.menu["readableColours"]->isChecked());
    EXPECT_FALSE(panelIsShown(*third));
    EXPECT_EQ(third->window.chosenPanelWidth(), 300);
    third->parts.menu["showSidePanel"]->trigger(); // and back to what is usual
    third.reset();
    EXPECT_TRUE(panelIsShown(*start()));
    EXPECT_THAT(log.lines, Not(Contains(HasSubstr("remembered"))));

    auto last = start();
    last->parts.controller.settings().setRemembering(false);
    last.reset();
    EXPECT_FALSE(home.has(settingsFile));
    ZNTAppearance().use(ZNTAppearance::Colours::System);
}

TEST_F(ZNTWindowDesktop, TheMarkIsTheSameOnTheCardAndInThePreferencesAndTheGroupComesBack)
{
    auto run = start();
    auto& card = *run->window.firstStart->firstStartRemember;
    run->parts.menu["showPreferencesView"]->trigger();
    auto& inPreferences = find<QCheckBox>(*dialog("PreferencesView"), "rememberBox");
    for (auto* mark : {&card, &inPreferences}) {
        mark->click();
        EXPECT_EQ(card.isChecked(), inPreferences.isChecked());
    }
    EXPECT_FALSE(run->parts.controller.settings().isRemembering());
    card.click();
    run->parts.menu["showFieldsWhilePlaying"]->trigger();
    auto& box = *run->window.macroComboBoxGroup;
    for (const char* group : {"Fights", "Talk"}) {
        box.setEditText(QString::fromLatin1(group));
        run->parts.menu["createNewMacroGroup"]->trigger();
        ASSERT_TRUE(until([] { return dialog("alert") != nullptr; }));
        dialog("alert")->accept();
        ASSERT_TRUE(until([] { return dialog("alert") == nullptr; }));
    }
    box.setEditText(u"Fights"_s);
    run.reset();
    run = start();
    EXPECT_EQ(run->window.macroComboBoxGroup->currentText(), u"Fights"_s);
    EXPECT_TRUE(run->parts.menu["showFieldsWhilePlaying"]->isChecked());
    EXPECT_TRUE(run->parts.controller.macroGroupDropDownController().getCurrentMacroGroup());
}

TEST_F(ZNTWindowDesktop, AWindowBesideTheGameHasItsPlaceAndAlertsHaveNone)
{
    auto run = start();
    run->parts.controller.settings().setRemembering(true);
    const auto open = [&run]() -> QDialog& {
        run->parts.menu["showPreferencesView"]->trigger();
        return *dialog("PreferencesView");
    };
    open().setGeometry(30, 60, 700, 500);
    ASSERT_TRUE(until([this] { return kept().find("place of PreferencesView") != std::string::npos; }))
        << "shortly after the change";
    alert.showMessage(u"Wait", u"A moment.");
    dialog("alert")->move(3, 3);
    run.reset();
    EXPECT_THAT(kept(), Not(HasSubstr("place of alert")));
    run = start();
    EXPECT_EQ(open().geometry(), QRect(30, 60, 700, 500));
    open().close();
    run->parts.menu["controlsLarger"]->trigger(); // its content needs more now
    run.reset();
    EXPECT_THAT(kept(), Not(HasSubstr("place of PreferencesView")));
}

TEST_F(ZNTWindowDesktop, ADamagedValueCostsOnlyItselfAndALine)
{
    home.write(settingsFile,
               "<plist version=\"1.0\"><dict><key>window</key><dict>"
               "<key>font</key><integer>12</integer><key>text-size</key><string>20</string>"
               "<key>colours</key><string>pink</string><key>side-panel</key><false/>"
               "<key>controls-size</key><real>3</real><key>side-panel-width</key><string>-1</string>"
               "<key>place of mainWindow</key><string>9x</string>"
               "<key>of a later version</key><string>kept</string></dict></dict></plist>");
    auto run = start();
    EXPECT_EQ(run->window.textFromServer->pointSize(), 20);
    EXPECT_FALSE(panelIsShown(*run));
    std::erase_if(log.lines, [](const auto& line) { return line.find("remembered") == line.npos; });
    EXPECT_THAT(log.lines,
                ElementsAre(HasSubstr("place of mainWindow"), HasSubstr("\"pink\""), HasSubstr("\"font\""),
                            HasSubstr("controls-size"), HasSubstr("side-panel-width")));
    run.reset();
    EXPECT_THAT(kept(), HasSubstr("of a later version"));
}

TEST_F(ZNTWindowDesktop, AMaximisedWindowKnowsItsOrdinarySizeAndAMinimisedOneComesBackOpen)
{
    auto run = start();
    run->parts.controller.settings().setRemembering(true);
    run->window.setGeometry(60, 70, 640, 500);
    run->window.setWindowState(Qt::WindowMaximized);
    run->window.setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
    run.reset();
    EXPECT_THAT(kept(), HasSubstr("640x500 at 60,70 maximised"));
    run = start();
    EXPECT_EQ(run->window.windowState(), Qt::WindowMaximized);
    EXPECT_EQ(run->window.normalGeometry(), QRect(60, 70, 640, 500));
}

struct RecordedTaskbar final : ZNTTaskbar {
    [[nodiscard]] bool hasActiveWindow() const override { return isActive; }
    void mark(QWidget&) override { ++marks; }
    bool isActive = false;
    int marks = 0;
};

TEST(ZNTWindowAttention, MarksOnceAndCountsInTheTitleUntilThePlayerComes)
{
    QWidget window;
    window.setWindowTitle(u"Cove %1 - Zantor"_s);
    RecordedTaskbar taskbar;
    bool isWanted = false;
    ZNTAttention attention(window, taskbar, [&isWanted] { return isWanted; });
    const auto titleIs = [&window](const QString& title) {
        return QTest::qWaitFor([&] { return window.windowTitle() == title; }, patience);
    };

    attention.textCame(u"A goblin arrives.\r\n");
    EXPECT_EQ(taskbar.marks, 0) << "not asked for";
    isWanted = true;
    taskbar.isActive = true;
    attention.textCame(u"A goblin arrives.\r\n");
    EXPECT_EQ(taskbar.marks, 0) << "the player sees it";
    taskbar.isActive = false;
    attention.textCame(u"\r\n \r\n");
    EXPECT_EQ(taskbar.marks, 0) << "nothing to read";

    attention.textCame(u"> ");
    EXPECT_EQ(window.windowTitle(), u"(1) Cove %1 - Zantor"_s);
    for (int line = 0; line < 6; ++line)
        attention.textCame(u"\r\nA goblin\r\n\r\narrives.\r\n");
    EXPECT_TRUE(titleIs(u"(12) Cove %1 - Zantor"_s));
    window.setWindowTitle(u"Zantor"_s); // the game has ended
    EXPECT_EQ(window.windowTitle(), u"(12) Zantor"_s);
    EXPECT_EQ(taskbar.marks, 1);

    attention.playerCame();
    EXPECT_EQ(window.windowTitle(), u"Zantor"_s);
    attention.textCame(u"A goblin leaves.\n");
    EXPECT_EQ(window.windowTitle(), u"(1) Zantor"_s);
    EXPECT_EQ(taskbar.marks, 2);
}

} // namespace
