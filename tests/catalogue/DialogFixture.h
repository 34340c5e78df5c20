#pragma once

#include "support/Printers.h"

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QTest>

#include <gtest/gtest.h>
#include <memory>

namespace fenrik {

/// A dialog and its controls by their names.
class DialogFixture : public testing::Test {
protected:
    void Show(std::unique_ptr<QDialog> shown)
    {
        dialog = std::move(shown);
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }

    template <typename Widget>
    Widget& Find(const char* name) const
    {
        return *dialog->findChild<Widget*>(name);
    }

    QStringList Texts(const char* name) const
    {
        const auto& list = Find<QListWidget>(name);
        QStringList texts;
        for (int row = 0; row < list.count(); ++row)
            texts.append(list.item(row)->text());
        return texts;
    }

    QString Label(const char* name) const { return Find<QLabel>(name).text(); }

    std::unique_ptr<QDialog> dialog;
};

}  // namespace fenrik
