#pragma once

#include "ZNTKeptRecordings.h"
#include "ZNTReplay.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class ZNTConsoleReplies;

/// The commands "/keep", "/kept" and "/run". Each takes the words behind its name.
class ZNTConsoleRecordings
{
public:
    /// What the commands ask of the session.
    struct Session {
        std::function<std::vector<std::u16string>()> recorded; ///< what the recorder holds
        /// False if there is no connection.
        std::function<bool(const ZNTKeptRecording&, ZNTReplay::Times)> run;
    };

    /// Both outlive this.
    ZNTConsoleRecordings(ZNTConsoleReplies& replies, ZNTKeptRecordings& kept, Session session)
        : replies(replies),
          kept(kept),
          session(std::move(session))
    {
    }

    void keep(std::u16string_view words);
    void editKept(std::u16string_view words);
    void run(std::u16string_view words);

private:
    void list();
    void show(std::u16string_view word);
    void remove(std::u16string_view word);
    void rename(std::u16string_view words);
    void changeSeconds(std::u16string_view words);
    void addCommand(std::u16string_view words);
    void changeCommand(std::u16string_view words);
    void deleteCommand(std::u16string_view words);

    /// The recording that `word` means, by its number in the list or its name. Complains if there is none.
    [[nodiscard]] std::optional<ZNTKeptRecording> meant(std::u16string_view word);
    /// The index of the command that `word` numbers. Complains and returns -1 if there is none.
    [[nodiscard]] long commandMeant(const ZNTKeptRecording& recording, std::u16string_view word);
    /// Stores the recording that had that name. Says how it is now, or what was wrong.
    void store(std::u16string_view name, const ZNTKeptRecording& changed);
    void complain(const ZNTError& error);

    ZNTConsoleReplies& replies;
    ZNTKeptRecordings& kept;
    Session session;
};
