#pragma once

#include <QLineEdit>

class QStringListModel;

namespace fenrik {

/// A field for a phone number: takes digits, "(", ")", "-", ".", and blanks; of a text that is pasted the rest falls
/// away. The numbers of the history are offered while typing, by the arrow in the field, and by the key Down.
class PhoneNumberEdit : public QLineEdit {
    Q_OBJECT

public:
    static constexpr int kLongest = 64;

    explicit PhoneNumberEdit(QWidget* parent = nullptr);

    /// The first one is offered first.
    void setHistory(const QStringList& numbers);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void OfferAll();

    QStringListModel* mHistory;
    QAction* mOffer;
};

}  // namespace fenrik
