#include "ZNTConsoleRecordings.h"

#include "ZNTConsoleReplies.h"
#include "ZNTConsoleVerbs.h"
#include "ZNTConsoleWords.h"

#include <algorithm>

using namespace znt::words;

namespace
{

/// Takes the last of several words off `words`. Empty if there is only one.
std::u16string_view lastOfSeveral(std::u16string_view& words)
{
    const auto blank = words.find_last_of(u' ');
    if (blank == words.npos)
        return {};
    const auto last = words.substr(blank + 1);
    words = znt::trimmedOfWhitespace(words.substr(0, blank));
    return last;
}

} // namespace

/// A name may have blanks, so the seconds are the last word if that is a number.
void ZNTConsoleRecordings::keep(std::u16string_view words)
{
    auto name = znt::trimmedOfWhitespace(words);
    const auto whole = name;
    auto seconds = lastOfSeveral(name);
    if (seconds.find_first_not_of(u"0123456789.,") != seconds.npos) {
        name = whole;
        seconds = {};
    }
    if (const auto done = kept.keep(name, seconds, session.recorded()))
        replies.say(done.value());
    else
        complain(done.error());
}

void ZNTConsoleRecordings::editKept(std::u16string_view words)
{
    if (words.empty()) {
        list();
        return;
    }
    carryOutVerb(replies, u"kept",
                 {{u"list", [this](auto) { list(); }},
                  {u"show", [this](auto word) { show(word); }},
                  {u"add", [this](auto rest) { addCommand(rest); }},
                  {u"change", [this](auto rest) { changeCommand(rest); }},
                  {u"delete", [this](auto rest) { deleteCommand(rest); }},
                  {u"rename", [this](auto rest) { rename(rest); }},
                  {u"seconds", [this](auto rest) { changeSeconds(rest); }},
                  {u"remove", [this](auto word) { remove(word); }}},
                 words);
}

/// A recording whose name ends in "again" is meant by its whole name.
void ZNTConsoleRecordings::run(std::u16string_view words)
{
    const auto all = kept.all();
    auto name = znt::trimmedOfWhitespace(words);
    auto times = ZNTReplay::Times::Once;
    if (std::ranges::find(all, name, &ZNTKeptRecording::name) == all.end()) {
        const auto whole = name;
        if (lastOfSeveral(name) == u"again")
            times = ZNTReplay::Times::AgainAndAgain;
        else
            name = whole;
    }
    const auto recording = meant(name);
    if (!recording)
        return;
    if (!session.run(*recording, times))
        replies.complain(u"Not connected, so nothing was run.");
    else
        replies.say(joined({u"Running ", znt::recordingInWords(*recording),
                            times == ZNTReplay::Times::Once ? u"." : u", again and again; /stop ends it."}));
}

void ZNTConsoleRecordings::list()
{
    const auto all = kept.all();
    for (std::size_t at = 0; at < all.size(); ++at)
        replies.say(joined({numbered(at), znt::recordingInWords(all[at])}));
    if (all.empty())
        replies.say(u"No recordings are kept yet; /record records, and /keep NAME keeps what was recorded.");
}

void ZNTConsoleRecordings::show(std::u16string_view word)
{
    const auto recording = meant(word);
    if (!recording)
        return;
    replies.say(znt::recordingInWords(*recording));
    for (std::size_t at = 0; at < recording->commands.size(); ++at)
        replies.say(joined({numbered(at), recording->commands[at]}));
}

void ZNTConsoleRecordings::remove(std::u16string_view word)
{
    const auto recording = meant(word);
    if (!recording)
        return;
    if (const auto removed = kept.remove(recording->name))
        replies.say(joined({u"The recording ", recording->name, u" is removed."}));
    else
        complain(removed.error());
}

void ZNTConsoleRecordings::rename(std::u16string_view words)
{
    auto recording = meant(firstWord(words));
    if (!recording)
        return;
    const auto before = std::exchange(recording->name, std::u16string(words));
    store(before, *recording);
}

void ZNTConsoleRecordings::changeSeconds(std::u16string_view words)
{
    auto recording = meant(firstWord(words));
    if (!recording)
        return;
    const auto seconds = znt::secondsTyped(words);
    if (!seconds) {
        complain(seconds.error());
        return;
    }
    recording->seconds = seconds.value();
    store(recording->name, *recording);
}

void ZNTConsoleRecordings::addCommand(std::u16string_view words)
{
    auto recording = meant(firstWord(words));
    if (!recording)
        return;
    recording->commands.emplace_back(words);
    store(recording->name, *recording);
}

void ZNTConsoleRecordings::changeCommand(std::u16string_view words)
{
    auto recording = meant(firstWord(words));
    const long index = recording ? commandMeant(*recording, firstWord(words)) : -1;
    if (index < 0)
        return;
    recording->commands[static_cast<std::size_t>(index)] = words;
    store(recording->name, *recording);
}

void ZNTConsoleRecordings::deleteCommand(std::u16string_view words)
{
    auto recording = meant(firstWord(words));
    const long index = recording ? commandMeant(*recording, firstWord(words)) : -1;
    if (index < 0)
        return;
    recording->commands.erase(recording->commands.begin() + index);
    store(recording->name, *recording);
}

std::optional<ZNTKeptRecording> ZNTConsoleRecordings::meant(std::u16string_view word)
{
    const auto all = kept.all();
    const long index = indexMeant(replies, namesOf(all, &ZNTKeptRecording::name),
                                  znt::trimmedOfWhitespace(word), u"recording");
    return index < 0 ? std::nullopt : std::optional(all[static_cast<std::size_t>(index)]);
}

long ZNTConsoleRecordings::commandMeant(const ZNTKeptRecording& recording, std::u16string_view word)
{
    const int number = wholeNumber(word);
    if (number > 0 && static_cast<std::size_t>(number) <= recording.commands.size())
        return number - 1;
    replies.complain(joined({u"Say the number of a line of ", znt::recordingInWords(recording), u"."}));
    return -1;
}

void ZNTConsoleRecordings::store(std::u16string_view name, const ZNTKeptRecording& changed)
{
    if (const auto stored = kept.change(name, changed))
        replies.say(joined({u"Kept ", znt::recordingInWords(changed), u"."}));
    else
        complain(stored.error());
}

void ZNTConsoleRecordings::complain(const ZNTError& error)
{
    replies.complain(znt::textFromUtf8(error.description));
}
