// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Application.h"

#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/Style.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <iterator>
#include <vector>

#include <malloc.h>

namespace trovarium {

namespace {

// Pixels of the main window, menu bar included.
constexpr int WindowWidth = 800;
constexpr int WindowHeight = 591;
constexpr int LinesToGrow = 1400; // of a screen on which the windows would be too small
constexpr double ScaleSteps = 4;  // to 1
constexpr double LargestScale = 8;

constexpr const char* ScaleVariable = "QT_SCALE_FACTOR"; // of whoever starts the program, who then decides
// A desktop that scales by itself sets these.
constexpr const char* DesktopVariables[] = {
    "QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING", "QT_USE_PHYSICAL_DPI", "QT_FONT_DPI"};

// By itself the allocator puts ever larger blocks, up to 32 MB, into heaps, of which it makes eight for each core, and
// which keep what is freed: hundreds of megabytes after an hour of photographs and films.
void keepHeapsSmall()
{
    constexpr int LargestInHeap = 9 << 20; // bytes: a frame of a film in full HD, which comes many times a second
    constexpr int KeptFree = 16 << 20;     // bytes at the end of a heap
    constexpr int Heaps = 2;               // one for this thread and one for all others
    mallopt(M_MMAP_THRESHOLD, LargestInHeap);
    mallopt(M_TRIM_THRESHOLD, KeptFree);
    mallopt(M_ARENA_MAX, Heaps);
}

bool isScaledByDesktop()
{
    return std::any_of(std::begin(DesktopVariables), std::end(DesktopVariables),
        [](const char* variable) { return qEnvironmentVariableIsSet(variable); });
}

// As the library takes them: by the screens' names, so that each keeps its own when it is unplugged for a while. Empty
// where the desktop scales, or no screen needs it.
QByteArray factorsOfScreens()
{
    QByteArray factors;
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen->devicePixelRatio() != 1)
            return {};
        const double factor = screenScale(screen->size().width(), screen->size().height());
        if (factor > 1 && !screen->name().isEmpty())
            factors += screen->name().toLocal8Bit() + '=' + QByteArray::number(factor) + ';';
    }
    return factors;
}

std::unique_ptr<QApplication> newApplication(int& argc, char** argv)
{
    QApplication::setStyle(makeStyle().release()); // which the library owns
    return std::make_unique<QApplication>(argc, argv);
}

// The variable is needed only while the application is made. Removed afterwards, so that programs we start don't
// inherit it.
std::unique_ptr<QApplication> applicationWith(const char* variable, const QByteArray& value, int& argc, char** argv)
{
    qputenv(variable, value);
    auto application = newApplication(argc, argv);
    qunsetenv(variable);
    return application;
}

// The library takes factors only before the application is made, and tells the screens only afterwards. So on a large
// screen it is made again, out of what the first one has taken from the arguments and the environment.
std::unique_ptr<QApplication> applicationForScreens(int& argc, char** argv)
{
    constexpr const char* StartupId = "DESKTOP_STARTUP_ID"; // by which the first window gets the keys
    const std::vector<char*> arguments(argv, argv + argc + 1);
    const QByteArray startupId = qgetenv(StartupId);
    auto application = newApplication(argc, argv);
    const QByteArray factors = factorsOfScreens();
    if (factors.isEmpty())
        return application;
    application.reset();
    argc = static_cast<int>(arguments.size()) - 1;
    std::copy(arguments.begin(), arguments.end(), argv);
    if (!startupId.isEmpty())
        qputenv(StartupId, startupId);
    return applicationWith("QT_SCREEN_SCALE_FACTORS", factors, argc, argv);
}

std::unique_ptr<QApplication> scaledApplication(int& argc, char** argv, std::string_view scale)
{
    if (qEnvironmentVariableIsSet(ScaleVariable))
        return newApplication(argc, argv);
    if (const double chosen = scaleOf(scale); chosen > 0)
        return applicationWith(ScaleVariable, QByteArray::number(chosen), argc, argv);
    return isScaledByDesktop() ? newApplication(argc, argv) : applicationForScreens(argc, argv);
}

} // namespace

double screenScale(int columns, int lines)
{
    if (lines < LinesToGrow)
        return 1;
    const double byHeight = std::round(ScaleSteps * lines / 2 / WindowHeight) / ScaleSteps;
    const double byWidth = std::floor(ScaleSteps * columns / WindowWidth) / ScaleSteps;
    return std::max(1.0, std::min(byHeight, byWidth));
}

double scaleOf(std::string_view text)
{
    double scale = 0;
    attempt([&] { scale = strictNumber(text); });
    return scale >= 1 && scale <= LargestScale ? scale : 0;
}

std::unique_ptr<QApplication> makeApplication(int& argc, char** argv, std::string_view scale)
{
    keepHeapsSmall(); // before there are threads
    auto application = scaledApplication(argc, argv, scale);
    std::setlocale(LC_NUMERIC, "C"); // libraries below read and write numbers with it
    QApplication::setApplicationName(QStringLiteral("trovarium"));
    QApplication::setDesktopFileName(QStringLiteral("trovarium"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setPalette(QApplication::style()->standardPalette());
    QApplication::setFont(planFont(PlanFont));
    return application;
}

} // namespace trovarium
