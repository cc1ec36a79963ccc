#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

class ZNTScreenReader;

/// Has a screen reader say important news once more if it was cut off: readers stop at each key and at each
/// change of the focus, and the end of a connection comes with both. It is said again when the player rests.
///
/// The key Control alone drops it. Players press it to silence their reader.
class ZNTNewsAgain final : public QObject
{
public:
    /// The reader outlives this. Made after the application object.
    explicit ZNTNewsAgain(const ZNTScreenReader& reader);

    /// `news` was just given to the reader. Newer news take its place.
    void watch(const QString& news);

    /// `words` were given to the reader after the news that are watched, and say more. If none are watched,
    /// nothing happens.
    void watchInstead(const QString& words);

    /// `words` do not hold any more.
    void drop(const QString& words);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Milliseconds without a key and without a change of the focus, after which it is said again.
    static constexpr int rest = 700;
    /// How often it is said again at the most.
    static constexpr int mostTimes = 3;

private:
    void forget();
    void expectEnd();
    void sayAgain();

    const ZNTScreenReader& reader;
    QString news; ///< empty if none is watched
    int timesLeft = 0;
    QDeadlineTimer end; ///< when the reader should have said it
    QTimer untilRest;
};
