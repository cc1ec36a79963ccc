#pragma once

#include <QObject>

/// While it lives, the caret of a field is not announced to screen readers.
///
/// If a caret moves in a field that does not have the focus yet, Orca 43 takes that field for one that it has
/// said already. Qt moves the caret before it announces the focus, so Orca would never say the field.
class ZNTQuietCaret final
{
public:
    ZNTQuietCaret();
    ~ZNTQuietCaret();
    ZNTQuietCaret(const ZNTQuietCaret&) = delete;
    ZNTQuietCaret& operator=(const ZNTQuietCaret&) = delete;

private:
    bool before; ///< ZNTFocusFirst may keep it quiet, too
};

/// While it lives, screen readers learn of the focus before the caret, in every field of the application. Of
/// what is typed into a field that hides it, they learn nothing. The focus does not seem to leave an open
/// menu, nor a field above a list that the field narrows down. They say a text also if it takes the place of
/// one of the same length.
class ZNTFocusFirst final : public QObject
{
public:
    explicit ZNTFocusFirst(QObject* parent = nullptr);
    ~ZNTFocusFirst() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
};
