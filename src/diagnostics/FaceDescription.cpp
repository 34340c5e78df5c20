#include "diagnostics/FaceDescription.h"

#include "diagnostics/CharacterFace.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace fenrik {

namespace {

/// A face changes many times a second and is read seldom: its description is made when it is asked for.
class FaceDescription : public QAccessibleWidget {
public:
    explicit FaceDescription(CharacterFace* face) : QAccessibleWidget(face, QAccessible::StaticText) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Description)
            return QAccessibleWidget::text(kind);
        const auto* face = qobject_cast<CharacterFace*>(object());
        return face != nullptr ? face->Text() : QString();
    }
};

QAccessibleInterface* MakeDescription(const QString&, QObject* object)
{
    auto* face = qobject_cast<CharacterFace*>(object);
    return face != nullptr ? new FaceDescription(face) : nullptr;
}

}  // namespace

void DescribeFacesToScreenReaders()
{
    // A factory that is already there is not added again.
    QAccessible::installFactory(MakeDescription);
}

}  // namespace fenrik
