#include "ZNTGameText.h"

#include <array>
#include <random>
#include <string_view>

namespace
{

using std::string_view;

constexpr std::array<string_view, 12> names{"Alda",  "Bron",  "Cerys", "Doran", "Elwin",   "Fenna",
                                            "Garth", "Hilde", "Ivo",   "Jorun", "Kestrel", "Lorcan"};
constexpr std::array<string_view, 10> beasts{"goblin",      "grey wolf",  "cave spider",  "bandit",
                                             "marsh troll", "giant toad", "rusty knight", "wild boar",
                                             "wraith",      "river imp"};
constexpr std::array<string_view, 8> verbs{"slashes", "bites", "kicks",  "stabs",
                                           "crushes", "claws", "misses", "grazes"};
constexpr std::array<string_view, 10> places{
    "The Old Market", "A Mossy Stair",   "Under the Bridge", "Smugglers' Cove", "Tower Landing",
    "A Dusty Cellar", "The Long Meadow", "Temple Steps",     "The Salt Road",   "A Quiet Courtyard"};
constexpr std::array<string_view, 8> sentences{
    "Cobbles slick with rain lead away between leaning houses.",
    "Somewhere above you a bell is rung, once, and then thinks better of it.",
    "The smell of bread and wet dogs hangs in the air.",
    "Lanterns sway on a rope that spans the street.",
    "A narrow door stands open; warm light falls across the threshold.",
    "Water drips from the vault into pools that no one has ever measured.",
    "Grass as high as your shoulder hides whatever rustles in it.",
    "Names have been scratched into the wall, some of them crossed out.",
};
constexpr std::array<string_view, 6> talk{
    "has anyone seen my lantern?", "group forming at the bridge, 3 more",
    "selling two potions, cheap!", "how do I get out of the cellar...",
    "the troll is back, run!",     "good night all"};
constexpr std::array<string_view, 4> colours{"\x1b[1;32m", "\x1b[0;36m", "\x1b[33m", "\x1b[1;31m"};
constexpr string_view plainColour = "\x1b[0m";

class Writer
{
public:
    explicit Writer(znt::bench::Prompts prompts) : prompts(prompts) {}

    std::string written(std::size_t size)
    {
        text.reserve(size + 1024);
        while (text.size() < size) {
            switch (random() % 6) {
            case 0:
                writeRoom();
                break;
            case 1:
            case 2:
            case 3:
                writeBlow();
                break;
            case 4:
                writeTalk();
                break;
            default:
                writePrompt();
                break;
            }
        }
        return std::move(text);
    }

private:
    template <typename Choices>
    string_view one(const Choices& choices)
    {
        return choices[random() % choices.size()];
    }
    void put(std::initializer_list<string_view> pieces)
    {
        for (const auto piece : pieces)
            text += piece;
    }
    void writeRoom()
    {
        put({"\x1b[1;36m", one(places), plainColour, "\r\n"});
        for (auto lines = 2 + random() % 3; lines > 0; --lines)
            put({one(sentences), " ", one(sentences), "\r\n"});
        put({"\x1b[32mExits: north, east, down.", plainColour, "\r\n"});
        put({"A ", one(beasts), " is here, watching you.\r\n"});
    }
    void writeBlow()
    {
        put({one(colours), "The ", one(beasts), " ", one(verbs), " ", one(names), " for ",
             std::to_string(random() % 200), " points.", plainColour, "\r\n"});
    }
    void writeTalk() { put({"\x1b[35m[chat]", plainColour, " ", one(names), ": ", one(talk), "\r\n"}); }
    void writePrompt()
    {
        put({"\x1b[0;37m<", std::to_string(random() % 500), "hp ", std::to_string(random() % 300), "mv>",
             plainColour, prompts == znt::bench::Prompts::WithGoAhead ? " \xFF\xF9\r\n" : " \r\n"});
    }

    znt::bench::Prompts prompts;
    std::string text;
    std::mt19937 random{4000};
};

} // namespace

namespace znt::bench
{

std::string gameBytes(std::size_t size, Prompts prompts) { return Writer(prompts).written(size); }

std::u16string plainGameText(std::size_t size)
{
    std::u16string text;
    const auto bytes = gameBytes(size + size / 4);
    for (std::size_t at = 0; at < bytes.size() && text.size() < size;) {
        if (bytes[at] == '\x1b')
            at = bytes.find('m', at) + 1;
        else
            text += static_cast<unsigned char>(bytes[at++]);
    }
    return text;
}

} // namespace znt::bench
