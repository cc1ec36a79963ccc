#pragma once

#include "ZNTCommandInterpreter.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

/// An interpreter of typed lines, and notes of what it causes.
struct ZNTNotedCommands : ZNTCommandActions, ZNTLineSender {
    using Done = std::vector<std::u16string>;

    void speedwalk(const std::shared_ptr<const ZNTSpeedWalking::Route>& route) override
    {
        done.push_back(u"walk " + route->path);
    }
    void stopSpeedwalk() override { done.emplace_back(u"stop"); }
    std::vector<std::u16string> getAllMacroNames() override
    {
        std::vector<std::u16string> names;
        for (const auto& [name, text] : macros)
            names.push_back(name);
        return names;
    }
    std::optional<std::u16string> getMacroByName(std::u16string_view name) override
    {
        ++timesLookedUp;
        const auto found = macros.find(std::u16string(name));
        return found == macros.end() ? std::nullopt : std::optional(found->second);
    }
    void insertTextIntoTheWindow(std::u16string_view text) override
    {
        done.push_back(u"show " + std::u16string(text));
    }
    void sendMessageToServer(std::u16string_view line, bool ignoreSpecials) override
    {
        ++linesSent;
        if (!ignoreSpecials && ZNTCommandInterpreter::hasPrefix(line))
            interpreter.showStrings(line);
        else
            done.push_back(u"send " + std::u16string(line));
    }
    Done doneBy(std::u16string_view line)
    {
        done.clear();
        linesSent = 0;
        sendMessageToServer(line, false);
        return done;
    }

    std::map<std::u16string, std::u16string> macros;
    int timesLookedUp = 0;
    std::size_t linesSent = 0; ///< by macros too
    Done done;
    ZNTCommandInterpreter interpreter{*this, *this};
};
