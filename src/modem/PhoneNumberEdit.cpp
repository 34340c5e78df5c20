#include "modem/PhoneNumberEdit.h"

#include <QAction>
#include <QCompleter>
#include <QKeyEvent>
#include <QStringListModel>
#include <QStyle>
#include <QValidator>

namespace fenrik {

namespace {

bool IsAllowed(QChar character)
{
    return QStringLiteral("0123456789()-. ").contains(character);
}

/// Takes out what no phone number has.
class NumberFilter : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int& cursor) const override
    {
        for (qsizetype at = text.size() - 1; at >= 0; --at) {
            if (IsAllowed(text.at(at)))
                continue;
            text.remove(at, 1);
            if (at < cursor)
                --cursor;
        }
        return Acceptable;
    }
};

}  // namespace

PhoneNumberEdit::PhoneNumberEdit(QWidget* parent)
    : QLineEdit(parent), mHistory(new QStringListModel(this)),
      mOffer(addAction(style()->standardIcon(QStyle::SP_ArrowDown), TrailingPosition))
{
    setMaxLength(kLongest);
    setValidator(new NumberFilter(this));
    setInputMethodHints(Qt::ImhDialableCharactersOnly);
    auto* completer = new QCompleter(mHistory, this);
    completer->setCompletionMode(QCompleter::PopupCompletion);
    setCompleter(completer);
    mOffer->setToolTip(tr("Numbers that were dialled before"));
    mOffer->setVisible(false);
    connect(mOffer, &QAction::triggered, this, &PhoneNumberEdit::OfferAll);
}

void PhoneNumberEdit::setHistory(const QStringList& numbers)
{
    mHistory->setStringList(numbers);
    mOffer->setVisible(!numbers.isEmpty());
}

void PhoneNumberEdit::OfferAll()
{
    completer()->setCompletionPrefix(QString());
    completer()->complete();
}

void PhoneNumberEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Down && mOffer->isVisible())
        OfferAll();
    else
        QLineEdit::keyPressEvent(event);
}

}  // namespace fenrik
