#pragma once

#include "PointViewFixture.h"
#include "diagnostics/FrameOutputs.h"
#include "diagnostics/OutputBar.h"
#include "diagnostics/OutputDiagnostics.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

namespace fenrik {

/// The output view as a user sees it, on the screen.
class OutputViewTest : public PointViewTest {
protected:
    OutputViewTest() { frame.resize(900, 420); }

    /// Node 3 as a model with 32 newer outputs of which the first is set up: a relationship of two levels.
    CNode& SelectFilledNode()
    {
        CNode& node = Select(3, 16);
        COutput& output = node.COutputs()[1];
        output.setName(QStringLiteral("Wiper"));
        output.setUsageCode(COutput::kByRelationship);
        output.setRPN(QByteArray::fromHex("FE012CF0 FD010203 FE012D FE012EF1 FF FF"));
        output.setLoadshed(Fixed4::FromTenThousandths(125000));
        output.setSequence(7);
        return node;
    }

    void Open()
    {
        view.DisplayOutputsFrame();
        frame.show();
    }

    template <typename Widget>
    Widget& Find(const char* name)
    {
        auto* widget = frame.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return *widget;
    }

    QString Text(const char* label) { return Find<QLabel>(label).text(); }
    bool Shown(const char* name) { return Find<QWidget>(name).isVisibleTo(&frame); }
    QComboBox& Levels() { return Find<QComboBox>("cmbDPWMC"); }
    QAction& Button(int number) { return Find<QAction>(qPrintable(QString::number(number))); }
    QTreeView& Tree() { return Find<QTreeView>("tvOutputs"); }

    void ClickNode(int number, int level = 0)
    {
        const QModelIndex row = frame.Tree().IndexOf(number, level);
        ASSERT_TRUE(row.isValid());
        Tree().setCurrentIndex(row);
    }

    /// The rows of the terms, columns joined by "|".
    std::vector<std::string> Terms()
    {
        std::vector<std::string> rows;
        const QAbstractItemModel& model = *Find<QTreeView>("lvRelations").model();
        for (int row = 0; row < model.rowCount(); ++row)
            rows.push_back(
                (model.index(row, 0).data().toString() + '|' + model.index(row, 1).data().toString()).toStdString());
        return rows;
    }

    FrameOutputs frame;
    OutputDiagnostics view{system, commands, errors, window, frame};
};

}  // namespace fenrik
