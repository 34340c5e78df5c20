#pragma once

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMetaObject>
#include <QTimer>

#include <functional>

namespace fenrik {

/// Works each dialog of one object name as soon as it is up.
class WhenShown : public QObject {
public:
    WhenShown(const char* name, std::function<void(QDialog&)> work) : mName(QLatin1String(name)), mWork(std::move(work))
    {
        qApp->installEventFilter(this);
    }

    [[nodiscard]] int Times() const { return mTimes; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
        if (dialog && dialog->objectName() == mName)
            QTimer::singleShot(0, dialog, [this, dialog] {
                ++mTimes;
                mWork(*dialog);
            });
        return false;
    }

private:
    QString mName;
    std::function<void(QDialog&)> mWork;
    int mTimes = 0;
};

/// Types a file's name into a file box and accepts it.
inline void ChooseFile(QDialog& box, const QString& name)
{
    box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
    QMetaObject::invokeMethod(&box, "accept");
}

}  // namespace fenrik
