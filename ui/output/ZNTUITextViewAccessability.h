#pragma once

#include "ZNTOutputView.h"

#include <mutex>
#include <string>
#include <string_view>

/// The class of the main window's output view. Beside what every output view does it carries a text to be
/// spoken, which any thread may leave here and read back whole.
class ZNTUITextViewAccessability final : public ZNTOutputView
{
    Q_OBJECT

public:
    using ZNTOutputView::ZNTOutputView;

    [[nodiscard]] std::u16string textToSpeak() const
    {
        const std::lock_guard hold(guard);
        return textToSpeak_;
    }
    void setTextToSpeak(std::u16string_view text)
    {
        const std::lock_guard hold(guard);
        textToSpeak_ = text;
    }

private:
    mutable std::mutex guard;
    std::u16string textToSpeak_;
};
