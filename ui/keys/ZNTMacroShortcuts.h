#pragma once

#include "ZNTMacroKeys.h"

#include <QHash>
#include <QKeySequence>
#include <functional>
#include <optional>

class QAction;
class QWidget;

/// The keys of macros that act in a window: the player's own, each for one macro whatever group is shown.
class ZNTMacroShortcuts
{
public:
    struct Macros {
        /// None if there is no such macro any more.
        std::function<std::optional<QString>(std::int64_t macro)> name;
        std::function<void(std::int64_t macro)> run;
    };

    /// The caller owns `window` and `log`, which outlive this. The window has its own keys already.
    ZNTMacroShortcuts(QWidget& window, const ZNTFilePlaces& places, ZNTPlatformLog& log, Macros macros);
    ~ZNTMacroShortcuts();
    ZNTMacroShortcuts(const ZNTMacroShortcuts&) = delete;
    ZNTMacroShortcuts& operator=(const ZNTMacroShortcuts&) = delete;

    /// Empty if the macro has none.
    [[nodiscard]] QKeySequence keyOf(std::int64_t macro) const;
    /// Why the macro cannot have that key, and a key that is free, in sentences; empty if it can. 0 stands
    /// for a new macro.
    [[nodiscard]] QString refusal(QKeyCombination key, std::int64_t macro) const;
    /// The error is a sentence for the player.
    ZNTResult<void> give(std::int64_t macro, const QKeySequence& key);

    /// A sentence about a macro whose key belongs to the window, as after a new version of the program; empty
    /// if there is none. Such a key stays the window's.
    [[nodiscard]] const std::u16string& clash() const { return clash_; }

private:
    void makeActions();
    bool isFree(const ZNTMacroKey& given, const QKeySequence& key);
    QString whyTaken(QKeyCombination key, std::int64_t macro) const;
    QKeySequence freeKey(std::int64_t macro) const;

    QWidget& window;
    ZNTMacroKeys keys;
    Macros macros;
    QHash<std::int64_t, QAction*> actions; ///< children of the window
    std::u16string clash_;
};
