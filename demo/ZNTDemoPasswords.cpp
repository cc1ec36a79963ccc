#include "ZNTDemoPasswords.h"

#include "ZNTDemoWords.h"

#include <algorithm>

const ZNTDemoPasswords::Kept* ZNTDemoPasswords::keptFor(std::u16string_view name) const
{
    const auto found = std::find_if(kept.begin(), kept.end(), [&](const Kept& each) {
        return znt::demo::equalsIgnoringCase(each.name, name);
    });
    return found == kept.end() ? nullptr : &*found;
}

bool ZNTDemoPasswords::hasPassword(std::u16string_view name) const { return keptFor(name) != nullptr; }

bool ZNTDemoPasswords::open(std::u16string_view name, std::u16string_view password)
{
    if (const auto* found = keptFor(name))
        return found->password == password;
    if (kept.size() >= mostKept)
        kept.pop_front();
    kept.push_back({znt::demo::lowerCased(name), std::u16string(password)});
    return true;
}
