#pragma once

#include <QObject>

/// While it lives, screen readers are not told where the caret of a field goes.
///
/// Orca 43 takes a field whose caret moves while another has the focus for one that it has said already. Qt
/// moves the caret of a field that it gives the focus to before it tells of the focus, so that the field is
/// never said.
class ZNTQuietCaret final
{
public:
    ZNTQuietCaret();
    ~ZNTQuietCaret();
    ZNTQuietCaret(const ZNTQuietCaret&) = delete;
    ZNTQuietCaret& operator=(const ZNTQuietCaret&) = delete;
};

/// Has readers hear of the focus before they hear of the caret, in every field of the application.
class ZNTFocusFirst final : public QObject
{
public:
    explicit ZNTFocusFirst(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
