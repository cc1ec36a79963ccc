#pragma once

#include "VirtualRunLoop.h"
#include "ZNTPlatform.h"
#include "ZNTTemporaryFolder.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

struct ZNTRecordedLog final : ZNTPlatformLog {
    std::vector<std::string> lines;
    void log(std::string_view text) override { lines.emplace_back(text); }
};

struct ZNTRecordedAlert final : ZNTAlert {
    /// Title and text of every alert, in order.
    std::vector<std::pair<std::u16string, std::u16string>> shown;
    /// Those of every question, and what it is answered.
    std::vector<std::pair<std::u16string, std::u16string>> asked;
    bool answer = true;
    std::function<void(std::u16string_view title)> whenShown = [](auto) {};

    void showMessage(std::u16string_view title, std::u16string_view text) override
    {
        shown.emplace_back(title, text);
        whenShown(title);
    }
    void askForConfirmation(std::u16string_view title, std::u16string_view text,
                            std::function<void(bool)> answered) override
    {
        asked.emplace_back(title, text);
        answered(answer);
    }
};

/// A machine of the test's own: virtual time, an empty home, everything said remembered.
struct ZNTTestPlatform {
    VirtualRunLoop loop;
    ZNTRecordedLog log;
    ZNTNotificationCenter notifications;
    ZNTRecordedAlert alert;
    ZNTTemporaryFolder home;
    ZNTPlatform platform{
        loop,          loop,  log,
        notifications, alert, {home.path(), ZNTFilePlaces::forThisProcess().resources, home.path(".cache")}};
};
