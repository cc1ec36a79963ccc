#pragma once

namespace znt
{

/// Has Qt make our own accessible elements in place of its own, for fields, menu items, rows of tabs and
/// alerts. After the application object is made; a second call changes nothing.
void installAccessibleFactories();

} // namespace znt
