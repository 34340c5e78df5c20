#include "platform/Boxes.h"

#include "platform/NormalPointer.h"
#include "platform/VersionInfo.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QRegularExpression>

namespace fenrik {

namespace {

constexpr int kInputBoxCharacters = 50;

QString TitleOrDefault(const QString& title)
{
    return title.isEmpty() ? VersionInfo::Title() : title;
}

QString OnlySuffixOf(const QString& filter)
{
    static const QRegularExpression kOnePattern(QStringLiteral("^[^(]*\\(\\*\\.(\\w+)\\)$"));
    return kOnePattern.match(filter).captured(1);
}

}  // namespace

Boxes::Button Boxes::MsgBox(const QString& text, QMessageBox::Icon icon, Buttons buttons, const QString& title)
{
    const NormalPointer pointer;
    QMessageBox box(icon, TitleOrDefault(title), text, buttons, QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MsgBox"));
    // The texts name files and ports between "<" and ">"; none of them is markup.
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return Button(box.exec());
}

QString Boxes::InputBox(const QString& prompt, const QString& title, const QString& defaultText)
{
    const NormalPointer pointer;
    QInputDialog box(QApplication::activeWindow());
    box.setObjectName(QStringLiteral("InputBox"));
    box.setWindowTitle(TitleOrDefault(title));
    box.setLabelText(prompt);
    box.setTextValue(defaultText);
    // Left to itself it is as wide as its prompt, which may be less than the title or a name takes. The box sets its
    // own smallest size from what is in it.
    box.findChild<QLineEdit*>()->setMinimumWidth(box.fontMetrics().averageCharWidth() * kInputBoxCharacters);
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

QString Boxes::OpenFileBox(const QString& title, const QString& filter, const QString& folder)
{
    const NormalPointer pointer;
    QFileDialog box(QApplication::activeWindow(), title, folder, filter);
    box.setObjectName(QStringLiteral("FileBox"));
    box.setOption(QFileDialog::DontUseNativeDialog);
    box.setFileMode(QFileDialog::ExistingFile);
    box.setDefaultSuffix(OnlySuffixOf(filter));
    return box.exec() == QDialog::Accepted ? box.selectedFiles().value(0) : QString();
}

}  // namespace fenrik
