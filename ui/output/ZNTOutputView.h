#pragma once

#include "ZNTOutputFind.h"
#include "ZNTOutputFonts.h"
#include "ZNTOutputLayout.h"
#include "ZNTOutputPanePainter.h"
#include "ZNTOutputPlaces.h"
#include "ZNTOutputScroll.h"
#include "ZNTOutputSelection.h"
#include "ZNTOutputStore.h"
#include "ZNTScreenElements.h"

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

class QPainter;
class ZNTNewLinesMark;

/// The output view: the game's text in a grid, in the game's colours and not the desktop's.
///
/// An append only stores; the view is painted on a later turn, at most every 16 ms, and paints no more than
/// what is visible. It follows the end unless the player has scrolled back; then the last rows stay in sight
/// below what is read, with a mark between that says the number of new lines, and Ctrl+End or a click on the
/// mark goes back to the end.
///
/// Text keeps the family and the size that it came with, so rows differ in height. Zoom makes all of it
/// larger or smaller by one factor.
///
/// Its keys: arrows, Home, End, Page Up and Page Down move a caret (Ctrl by words and to the ends of the
/// text, Shift selects), Ctrl+A, Ctrl+C, Ctrl+Insert. What a player would type goes on to the command line.
class ZNTOutputView : public QAbstractScrollArea, public ZNTTextView
{
    Q_OBJECT

public:
    using Position = ZNTOutputStore::Position;

    static constexpr double smallestPointSize = 8;
    static constexpr double largestPointSize = 48;

    explicit ZNTOutputView(QWidget* parent = nullptr);
    ~ZNTOutputView() override;

    void append(const ZNTAttributedText& text) override;
    void scrollToEnd() override;
    void clear() override;
    /// Only noted. The player cannot write here, and the program may always append.
    void setEditable(bool editable) override { editable_ = editable; }

    /// The family and size, without zoom, of later text that names none. It is also the measure of the grid.
    /// Until set it is 12 points of Menlo, or of the system's fixed-width font. The size is brought into its
    /// bounds. A family without a fixed width is laid out in columns, too.
    void setTextFont(const QFont& font);
    [[nodiscard]] QFont textFont() const { return ZNTOutputFonts::fontOf(base()); }
    /// Zooms so that this font shows at so many points, within bounds.
    void setPointSize(double points);
    [[nodiscard]] double pointSize() const { return base().size * fonts.zoom(); }
    /// The font in which such text is shown, with the zoom.
    [[nodiscard]] QFont shownFont() const { return ZNTOutputFonts::fontOf(base(), fonts.zoom()); }
    [[nodiscard]] QFont shownFontOf(const ZNTOutputStyle& style) const
    {
        return fonts.face(style.font).font({style.isBold, style.isItalic});
    }

    /// For games in a Chinese encoding: line drawing, stars and their like are two columns wide.
    void setAmbiguousWidth(znt::AmbiguousWidth width);
    /// Whether colours too dark to be read on their background are made lighter. Off until switched on.
    void setReadableColours(bool readable);
    [[nodiscard]] bool hasReadableColours() const { return panePainter.hasReadableColours(); }
    /// Whether web addresses are underlined, and a click on one asks to open it. Off until switched on.
    void setWebLinks(bool shown);
    /// Whether the pointer over a line shows when it came. Off until switched on.
    void setLineTimes(bool shown);
    /// For the times of lines: the seconds since 1970. The system's clock until set.
    void setClock(std::function<std::uint32_t()> seconds) { clock = std::move(seconds); }
    /// When the line came that the player is at, and its text: that of a selection, else that of the
    /// caret while the view has the focus, else the last one with text. Empty if there is no text.
    [[nodiscard]] QString timeOfLineInWords() const;
    /// Text in memory past this many bytes is dropped from the beginning. ZNTOutputStore has the default.
    void setMemoryLimit(std::size_t bytes);

    /// If there is text, the next text begins on a row of its own below a drawn rule. Neither row nor rule
    /// changes the text.
    void beginSession();

    /// Shown in the view, and its description for screen readers, while there is no text. It is not part of
    /// the text. Empty for none.
    void setEmptyHint(const QString& words);
    /// While something else stands in the empty view, the hint is not drawn. Screen readers still have it.
    void coverEmptyHint(bool isCovered);
    [[nodiscard]] bool isEmpty() const { return store_.start() == store_.end(); }

    [[nodiscard]] const ZNTOutputStore& store() const { return store_; }
    [[nodiscard]] bool followsEnd() const { return scrolling.isFollowing(); }
    /// Lines that arrived below while the player was reading further up.
    [[nodiscard]] std::int64_t newLinesBelow() const { return scrolling.newLinesBelow(); }

    [[nodiscard]] bool hasSelection() const { return !selection.isEmpty(); }
    /// The selected text with "\n" between lines.
    [[nodiscard]] QString selectedText() const;
    [[nodiscard]] Position selectionStart() const { return selection.start(); }
    [[nodiscard]] Position selectionEnd() const { return selection.end(); }
    [[nodiscard]] Position caret() const { return selection.caret(); }
    /// Selects from `from` to `to`, where the caret goes; both are brought inside the text.
    void select(Position from, Position to);
    void scrollToPosition(Position position);

    /// Where the character at `position` is drawn, in the viewport; empty where it is out of sight.
    [[nodiscard]] QRect characterRect(Position position) const;
    /// The character drawn at `point` of the viewport, or the nearest of its row.
    [[nodiscard]] Position positionAt(QPoint point) const;
    /// The row of the screen that `position` is in: [first, second). Empty for none.
    [[nodiscard]] std::pair<Position, Position> rowAround(Position position) const;

    /// Looks for `text` without regard to case and highlights every match. Selects the last one at or
    /// before what is selected or visible, and reports through `findStatusChanged`. Empty text ends it.
    void find(const QString& text);
    [[nodiscard]] ZNTOutputFind::Status findStatus() const;

    [[nodiscard]] QSize sizeHint() const override;
    /// The size of the widget that shows so many columns and rows.
    [[nodiscard]] QSize sizeForGrid(int columnCount, int rowCount) const;
    [[nodiscard]] int columns() const { return textLayout.rows().columnsOfFont(store_.defaultFont()); }
    /// The rows that can be read at once, without the last rows in their pane.
    [[nodiscard]] int visibleRows() const { return scrolling.visibleRows(); }

public Q_SLOTS:
    void copy();
    void selectAll();
    /// Shows the time of the line that the player is at, beside it if it is in sight.
    void showTimeOfLine();
    /// Goes to the end and follows it again.
    void jumpToEnd();
    /// Scroll without moving the caret, for keys pressed in the command line.
    void pageUp();
    void pageDown();
    void lineUp();
    void lineDown();
    void zoomIn();
    void zoomOut();
    void resetZoom();
    /// The next match towards the end, or the previous towards the beginning. It wraps around.
    void findNext();
    void findPrevious();
    void endFind() { find(QString()); }

Q_SIGNALS:
    /// A key that belongs into the command line. The event is good until the slot returns.
    void keyForCommandLine(QKeyEvent* event);
    /// Whether there is a selection has changed.
    void copyAvailable(bool available);
    void shownFontChanged(const QFont& font);
    /// The columns or the rows that fit may have changed.
    void gridChanged();
    void followsEndChanged(bool follows);
    /// The first text has come, or the view was emptied.
    void emptinessChanged();
    void findStatusChanged(const ZNTOutputFind::Status& status);
    /// The player clicked a web address, as it stands in the text.
    void webAddressClicked(const QString& address);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    enum class SelectBy { Character, Word, Line };
    enum class Selecting { No, Yes };

    /// Brings positions inside the text after the oldest text was dropped.
    void noteDropped(Position oldStart);

    void noteEmptiness();
    void describeWhileEmpty();

    [[nodiscard]] const ZNTFont& base() const { return store_.fonts()[store_.defaultFont()]; }
    [[nodiscard]] const ZNTOutputFace& baseFace() const { return fonts.face(store_.defaultFont()); }
    void changeZoom(double factor);

    // Painting and scrolling
    void scheduleRefresh();
    void refresh();
    void layoutChanged();
    void placeTop(ZNTRowPlace place);
    void scrollByRows(std::int64_t count);
    void updateScrollBar();
    void updateMark();

    // Caret and selection
    bool moveCaretByKey(QKeyEvent* event);
    void moveCaret(Position to, Selecting selecting);
    void moveCaretByRows(std::int64_t count, Selecting selecting);
    void setSelection(Position newAnchor, Position newCaret);
    void extendTo(Position position);
    [[nodiscard]] std::pair<Position, Position> unitAround(Position position) const;
    void offerPrimarySelection();

    // What is under the pointer
    [[nodiscard]] QString webAddressAt(QPoint point) const;
    void showPointer(QPoint point);
    [[nodiscard]] std::int64_t lineOfPlayer() const;
    [[nodiscard]] QString timeInWords(std::uint32_t second) const;

    // For the accessibility bus
    void announceAppended();
    void announceCaret(bool moved, bool selectionChanged);
    /// `length` units were dropped from the beginning.
    void announceRemoved(qsizetype length);

    void showMatch(const std::optional<ZNTOutputFind::Match>& match);

    ZNTOutputStore store_;
    ZNTOutputFonts fonts{store_.fonts()};
    ZNTOutputLayout textLayout{store_, fonts};
    ZNTOutputFind finder{store_};
    ZNTOutputPanePainter panePainter{store_, textLayout, finder, fonts};
    ZNTOutputSelection selection;
    ZNTNewLinesMark* mark;
    ZNTOutputScroll scrolling; ///< after the mark, which it asks for its height
    ZNTOutputPlaces places{store_, fonts, textLayout, scrolling};
    QString emptyHint;
    bool isHintCovered = false;
    std::function<std::uint32_t()> clock;
    bool hasWebLinks = false, hasLineTimes = false;

    bool editable_ = false;
    bool settingScrollBar = false;
    int wheelRemainder = 0;

    qreal caretX = -1; // the place in its row that Up and Down try to keep; -1: the caret's own
    SelectBy selectBy = SelectBy::Character;
    bool isDragging = false;
    std::pair<Position, Position> dragOrigin;
    QPoint dragPoint;
    QElapsedTimer sinceDoubleClick;
    QPoint doubleClickPoint;

    Position announcedEnd = 0;
    QTimer refreshTimer, dragTimer, findTimer;
    QElapsedTimer sincePaint;
};
