#pragma once

#include "Messages.h"
#include "app/messages/MessageListModel.h"
#include "support/Printers.h"
#include "widgets/MessageListView.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QScrollBar>
#include <QtTest>
#include <gmock/gmock.h>

namespace fenrik {

/// A shown and focused list with an empty model.
class MessageListViewTest : public testing::Test {
protected:
    MessageListViewTest()
    {
        view.setObjectName(QStringLiteral("lvMessages"));
        view.setModel(&model);
        view.resize(900, 300);
        view.show();
        view.activateWindow();
        view.setFocus();
        (void)QTest::qWaitForWindowExposed(&view);
    }

    void Add(int lines)
    {
        const auto name = model.Intern(QStringLiteral("Lamp"), QStringLiteral("On"));
        for (int i = 0; i < lines; ++i)
            model.Add(Received(12, mNext++), name, 0);
    }

    void AddAndFlush(int lines)
    {
        Add(lines);
        Flush();
    }
    void Flush()
    {
        view.Flush();
        view.ShowNews();
    }

    [[nodiscard]] int LastVisibleRow() const { return view.FirstVisibleRow() + view.WholeRows() - 1; }
    [[nodiscard]] QPoint Place(int row, int column = 0) const
    {
        return view.visualRect(model.index(row, column)).center();
    }
    void Click(int row, Qt::MouseButton button = Qt::LeftButton, int column = 0)
    {
        QTest::mouseClick(view.viewport(), button, {}, Place(row, column));
    }
    void Key(Qt::Key key) { QTest::keyClick(&view, key); }
    void Scroll(int row) { view.verticalScrollBar()->setValue(row); }

    MessageListModel model;
    MessageListView view;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};

private:
    int mNext = 0;
};

}  // namespace fenrik
