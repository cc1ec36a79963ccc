#pragma once

#include "ZNTHelpDialog.h"

#include <functional>

class QUrl;

/// The icon, the version, the licence and the home page.
class ZNTAboutPage final : public ZNTHelpDialog
{
public:
    /// `follow` is called for links.
    ZNTAboutPage(QWidget& window, std::function<void(const QUrl&)> follow);
};
