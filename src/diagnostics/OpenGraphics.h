#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

namespace fenrik {

class Graphics;

/// The opening banner: types product title, version and build on the big face, one character at a time behind a cursor,
/// once. It runs from the event loop, so that the window is there before its first character, and takes two seconds.
/// ClearFace of the same Graphics ends it at once.
class OpenGraphics : public QObject {
    Q_OBJECT

public:
    /// `graphics` outlives it. The timer is its child "TOpenGraphics".
    OpenGraphics(Graphics& graphics, QStringList lines, QObject* parent = nullptr);

    /// The three lines of the banner, of 32 columns.
    [[nodiscard]] static QStringList BannerLines(const QString& version, const QString& build, bool isBeta);

    /// At the first activation of the window. Any other call does nothing.
    void Start();

    [[nodiscard]] bool Running() const { return mTimer.isActive(); }

private:
    void TypeNext();
    [[nodiscard]] bool NextPlace();

    Graphics& mGraphics;
    QStringList mLines;
    QTimer mTimer;
    bool mStarted = false;
    int mLine = 0;  // where the cursor stands, both from 0
    int mColumn = 0;
};

}  // namespace fenrik
