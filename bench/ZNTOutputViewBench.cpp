// The output view over a long session: game text, parsed beforehand, in chunks of some fifteen lines, up to a
// million lines or as many as the argument says. A shown window; Qt's loop turns after each chunk, so
// painting, scroll bar and accessibility are part of what is measured.

#include "ZNTGameText.h"
#include "ZNTOutputView.h"
#include "ZNTParserUtility.h"
#include "ZNTSessionless.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

constexpr int linesPerChunk = 15;
constexpr int windows = 10; // of the whole, each with its own mean

std::vector<ZNTAttributedText> parsedChunks(std::size_t bytes)
{
    ZNTParserUtility parser;
    const auto text = znt::bench::gameBytes(bytes);
    std::vector<ZNTAttributedText> chunks;
    for (std::size_t from = 0; from < text.size();) {
        auto to = from;
        for (int line = 0; line < linesPerChunk && to != text.npos; ++line)
            to = text.find('\n', to + 1);
        to = to == text.npos ? text.size() : to + 1;
        const std::u16string chunk(text.begin() + static_cast<std::ptrdiff_t>(from),
                                   text.begin() + static_cast<std::ptrdiff_t>(to));
        chunks.push_back(parser.processIncomingStream(chunk));
        from = to;
    }
    return chunks;
}

double residentMiB()
{
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0, resident = 0;
    file >> total >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

double milliseconds(const QElapsedTimer& since) { return static_cast<double>(since.nsecsElapsed()) / 1e6; }

/// The worst and the mean of what `act` takes with everything it causes, painting included.
template <typename Act>
void measure(const char* what, ZNTOutputView& view, int times, Act act)
{
    double worst = 0, sum = 0;
    for (int time = 0; time < times; ++time) {
        QElapsedTimer elapsed;
        elapsed.start();
        act(time);
        view.viewport()->repaint();
        QApplication::processEvents();
        const double took = milliseconds(elapsed);
        worst = std::max(worst, took);
        sum += took;
    }
    std::printf("%-48s mean %8.2f ms   worst %8.2f ms\n", what, sum / times, worst);
    std::fflush(stdout);
}

/// Appends until `isEnough`, the loop turning each time; the mean in microseconds.
template <typename IsEnough>
double appendUntil(ZNTOutputView& view, const std::vector<ZNTAttributedText>& chunks, std::size_t& next,
                   double& worst, IsEnough isEnough)
{
    double sum = 0;
    std::size_t appended = 0;
    for (; !isEnough(); ++appended) {
        QElapsedTimer elapsed;
        elapsed.start();
        view.append(chunks[next++ % chunks.size()]);
        view.scrollToEnd();
        QApplication::processEvents();
        const double took = milliseconds(elapsed);
        sum += took;
        worst = std::max(worst, took);
    }
    return 1000 * sum / static_cast<double>(appended);
}

/// Beside each part of the way, in the same minute, an empty view of the same size gets as much.
void fill(ZNTOutputView& view, ZNTOutputView& empty, const std::vector<ZNTAttributedText>& chunks,
          std::int64_t lines)
{
    const auto linesOf = [](const ZNTOutputView& of) {
        return of.store().endLine() - of.store().firstLine();
    };
    double all = 0, worst = 0, worstOfEmpty = 0;
    std::size_t next = 0, nextOfEmpty = 0;
    std::printf("mean of an append in us, painting included\n");
    std::printf("%9s %10s %12s %6s\n", "lines", "this view", "an empty one", "ratio");
    for (std::int64_t part = 1; part <= windows; ++part) {
        const auto before = next;
        const double mean =
            appendUntil(view, chunks, next, worst, [&] { return linesOf(view) >= lines * part / windows; });
        empty.clear();
        const double meanOfEmpty = appendUntil(empty, chunks, nextOfEmpty, worstOfEmpty,
                                               [&] { return linesOf(empty) >= lines / windows; });
        all += mean * static_cast<double>(next - before) / 1e6;
        std::printf("%9lld %10.1f %12.1f %6.2f\n", static_cast<long long>(lines * part / windows), mean,
                    meanOfEmpty, mean / meanOfEmpty);
    }
    std::printf("worst append %.1f ms; all %.2f s\n", worst, all);
    empty.clear();
}

void reportMemory(const ZNTOutputView& view, double residentBefore)
{
    const auto characters = static_cast<double>(view.store().end() - view.store().start());
    const double store = static_cast<double>(view.store().memoryInUse());
    std::printf(
        "memory: text %.1f Mi characters; store %.1f MiB, %.2f times a byte a character; process %+.1f MiB\n",
        characters / (1 << 20), store / (1 << 20), store / characters, residentMiB() - residentBefore);
}

void readAndSearch(ZNTOutputView& view)
{
    measure("page up", view, 200, [&](int) { view.pageUp(); });
    auto* bar = view.verticalScrollBar();
    measure("drag the scroll bar", view, 100,
            [&](int time) { bar->setValue(bar->maximum() / 101 * (time + 1)); });
    measure("append while scrolled back", view, 200, [&](int) { view.append({u"one more line\n", {}, {}}); });
    view.jumpToEnd();
    measure("find what is near", view, 1, [&](int) { view.find(QStringLiteral("exits")); });
    measure("next match", view, 100, [&](int) { view.findPrevious(); });
    measure("find what is nowhere, all text searched", view, 1,
            [&](int) { view.find(QStringLiteral("no such words at all")); });
    measure("count every match of one letter", view, 1, [&](int) {
        view.find(QStringLiteral("e"));
        while (view.findStatus().isCounting)
            QApplication::processEvents();
    });
    std::printf("  %lld matches\n", static_cast<long long>(view.findStatus().count));
    view.endFind();
    view.jumpToEnd();
    const QSize size = view.size();
    measure("resize, at the end", view, 20,
            [&](int time) { view.resize(size.width() - 20 * time, size.height()); });
    view.scrollToPosition((view.store().start() + view.store().end()) / 2);
    measure("resize, in the middle", view, 20,
            [&](int time) { view.resize(size.width() / 2 + 20 * time, size.height()); });
    measure("zoom", view, 10, [&](int) { view.zoomIn(); });
    view.selectAll();
    measure("copy everything", view, 1, [&](int) { (void)view.selectedText(); });
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zantor_view_bench"));
    const std::int64_t lines = argc > 1 ? std::atoll(argv[1]) : 1'000'000;
    const auto chunks = parsedChunks(std::size_t{8} << 20);

    ZNTOutputView view;
    view.resize(view.sizeForGrid(100, 40));
    view.show();
    view.setFocus();
    QApplication::processEvents();
    if (qEnvironmentVariableIsSet("ZANTOR_LISTENER")) { // see output_view_listener.py
        QElapsedTimer waiting;
        for (waiting.start(); !QAccessible::isActive() && waiting.elapsed() < 10'000;)
            QApplication::processEvents();
        view.append({u"listen\n", {}, {}});
        for (waiting.start(); waiting.elapsed() < 3'000;)
            QApplication::processEvents();
    }
    std::printf("accessibility bridge: %s\n", QAccessible::isActive() ? "on" : "off");
    ZNTOutputView empty;
    empty.resize(view.size());
    empty.show();
    std::size_t unused = 0;
    double ignored = 0;
    appendUntil(empty, chunks, unused, ignored,
                [&] { return unused > 1000; }); // fonts are loaded, caches warm
    const double before = residentMiB();
    fill(view, empty, chunks, lines);
    reportMemory(view, before);
    readAndSearch(view);
    return 0;
}
