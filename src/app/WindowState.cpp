#include "app/WindowState.h"

#include "platform/SettingsStore.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QScreen>
#include <QSplitter>
#include <QStringList>
#include <QWidget>

#include <algorithm>

namespace fenrik {

namespace {

constexpr const char* kWindow = "Window";
constexpr int kTitleBar = 36;  // about what the desktop puts on top
constexpr int kWidestColumn = 4000;
constexpr int kLargest = 100'000;  // pixels: beyond every desktop, and sums of it still fit a number
enum Place { kLeft, kTop, kWidth, kHeight, kMaximized, kPlaces };

QString Text(const QList<int>& numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts.join(QLatin1Char(','));
}

/// Nothing if a part of the text is no number, or none that a window can have.
QList<int> Numbers(const QString& text)
{
    QList<int> numbers;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        bool good = false;
        numbers.append(part.toInt(&good));
        if (!good || numbers.last() < -kLargest || numbers.last() > kLargest)
            return {};
    }
    return numbers;
}

/// The name of the list that a header belongs to; empty for headers without columns to be remembered.
QString NameOf(const QHeaderView& header)
{
    return header.orientation() == Qt::Horizontal && header.count() > 1 ? header.parent()->objectName() : QString();
}

QList<int> Widths(const QHeaderView& header)
{
    QList<int> widths;
    for (int column = 0; column < header.count(); ++column)
        widths.append(header.sectionSize(column));
    return widths;
}

void SetWidths(QHeaderView& header, const QList<int>& widths)
{
    if (widths.size() != header.count())
        return;
    // The last column takes what is left.
    for (int column = 0; column < header.count() - 1; ++column) {
        if (!header.isSectionHidden(column))
            header.resizeSection(column, std::clamp(widths[column], header.minimumSectionSize(), kWidestColumn));
    }
}

}  // namespace

QList<QRect> WindowState::Screens()
{
    QList<QRect> screens{QGuiApplication::primaryScreen()->availableGeometry()};
    const auto all = QGuiApplication::screens();
    for (const QScreen* screen : all)
        screens.append(screen->availableGeometry());
    return screens;
}

QRect WindowState::FitToScreen(const QRect& wanted) const
{
    if (mScreens.isEmpty())
        return wanted;
    const auto holds = [&wanted](const QRect& screen) { return screen.contains(wanted.center()); };
    const auto found = std::find_if(mScreens.begin(), mScreens.end(), holds);
    const QRect screen = found == mScreens.end() ? mScreens.constFirst() : *found;
    const QRect room = screen.adjusted(0, kTitleBar, 0, 0);
    QRect fitted(wanted.topLeft(), wanted.size().boundedTo(room.size()));
    fitted.moveLeft(std::clamp(fitted.left(), room.left(), room.right() + 1 - fitted.width()));
    fitted.moveTop(std::clamp(fitted.top(), room.top(), room.bottom() + 1 - fitted.height()));
    return fitted;
}

void WindowState::Restore(QWidget& window) const
{
    const auto numbers = [this, &window](const QString& key) {
        return Numbers(mStore.GetSetting(window.objectName(), key, QString()));
    };
    const QList<int> place = numbers(QLatin1String(kWindow));
    if (place.size() == kPlaces) {
        // A smaller one would grow when it is shown, and then out of the screen.
        const QSize least = window.minimumSizeHint().expandedTo(window.minimumSize()).expandedTo({1, 1});
        const QSize size = QSize(place[kWidth], place[kHeight]).expandedTo(least);
        window.setGeometry(FitToScreen({QPoint(place[kLeft], place[kTop]), size}));
        if (place[kMaximized] != 0)
            window.setWindowState(window.windowState() | Qt::WindowMaximized);
    } else {
        window.resize(FitToScreen(QRect(QPoint(0, 0), window.size())).size());
    }
    const auto splitters = window.findChildren<QSplitter*>();
    for (QSplitter* splitter : splitters) {
        if (const QList<int> sizes = numbers(splitter->objectName()); sizes.size() == splitter->count())
            splitter->setSizes(sizes);
    }
    const auto headers = window.findChildren<QHeaderView*>();
    for (QHeaderView* header : headers) {
        if (const QString name = NameOf(*header); !name.isEmpty())
            SetWidths(*header, numbers(name));
    }
}

void WindowState::Save(const QWidget& window)
{
    if (!window.isVisible())
        return;
    const auto save = [this, &window](const QString& key, const QList<int>& numbers) {
        mStore.SaveSetting(window.objectName(), key, Text(numbers));
    };
    const QRect normal = window.isMaximized() ? window.normalGeometry() : window.geometry();
    save(QLatin1String(kWindow),
         {normal.left(), normal.top(), normal.width(), normal.height(), window.isMaximized() ? 1 : 0});
    const auto splitters = window.findChildren<QSplitter*>();
    for (const QSplitter* splitter : splitters)
        save(splitter->objectName(), splitter->sizes());
    const auto headers = window.findChildren<QHeaderView*>();
    for (const QHeaderView* header : headers) {
        if (const QString name = NameOf(*header); !name.isEmpty())
            save(name, Widths(*header));
    }
    mStore.Sync();
}

}  // namespace fenrik
