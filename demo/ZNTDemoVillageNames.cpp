#include "ZNTDemoVillage.h"
#include "ZNTDemoWords.h"

#include <algorithm>
#include <utility>

using namespace znt::demo;

namespace
{

constexpr std::size_t longestName = 20;

} // namespace

void ZNTDemoVillage::rename(ZNTDemoPlayer& player, std::u16string_view name)
{
    const bool isKept = passwords.hasPassword(name);
    if (name.empty() || name.size() > longestName || !std::all_of(name.begin(), name.end(), isLetter)) {
        tell(player, ZNTDemoPhrase::NameHow);
    } else if (isTaken(name, &player)) {
        tell(player, ZNTDemoPhrase::NameTaken);
    } else if (player.audience.screen().canHideTyping) {
        player.wantedName = name;
        player.audience.hideTyping(true);
        tell(player, isKept ? ZNTDemoPhrase::PasswordAsk : ZNTDemoPhrase::PasswordChoose, name);
    } else if (isKept) {
        tell(player, ZNTDemoPhrase::PasswordCannotBeHidden, name);
    } else {
        giveName(player, name);
    }
}

void ZNTDemoVillage::takePassword(ZNTDemoPlayer& player, std::u16string_view password)
{
    const auto name = std::exchange(player.wantedName, {});
    player.audience.hideTyping(false);
    if (password.empty())
        tell(player, ZNTDemoPhrase::NameStays, player.name);
    else if (password.size() > ZNTDemoPasswords::longest)
        tell(player, ZNTDemoPhrase::PasswordTooLong);
    else if (isTaken(name, &player)) // by somebody who was faster
        tell(player, ZNTDemoPhrase::NameTaken);
    else if (!passwords.open(name, password))
        tell(player, ZNTDemoPhrase::PasswordWrong, name);
    else
        giveName(player, name);
}

void ZNTDemoVillage::giveName(ZNTDemoPlayer& player, std::u16string_view name)
{
    const auto before = std::exchange(player.name, std::u16string(name));
    tell(player, ZNTDemoPhrase::NameIs, name);
    tellOthersIn(player.room, &player, ZNTDemoPhrase::SomeoneIsNowCalled, before, name);
}

std::u16string ZNTDemoVillage::freeName() const
{
    // Past the end of the list the names come again with letters added: names are letters only, so that a
    // trigger's word matches them whole.
    std::u16string ending;
    for (;;) {
        auto names = texts.phrase(ZNTDemoPhrase::Names);
        while (!names.empty()) {
            auto name = std::u16string(takeWord(names)) + ending;
            if (!isTaken(name, nullptr) && !passwords.hasPassword(name))
                return name;
        }
        ending += u'a';
    }
}

bool ZNTDemoVillage::isTaken(std::u16string_view name, const ZNTDemoPlayer* by) const
{
    return isCalled(ZNTDemoPhrase::Bob, name) || isCalled(ZNTDemoPhrase::Goblin, name) ||
           isCalled(ZNTDemoPhrase::Guide, name) ||
           std::any_of(players.begin(), players.end(), [&](const auto& each) {
               return each.get() != by && equalsIgnoringCase(each->name, name);
           });
}
