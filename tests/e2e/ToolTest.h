#pragma once

#include "app/MMain.h"
#include "app/frmDiag.h"
#include "e2e/BoxWatcher.h"
#include "e2e/PortableCopy.h"
#include "e2e/VehicleProcess.h"
#include "support/Printers.h"

#include <QAbstractItemModel>
#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fenrik {

/// The tool in this process with its real windows, clock and port, and the simulated vehicle beside it. Everything is
/// worked and looked at through widgets, found by their names. When a test ends, no box and no error may be left over.
class ToolTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// How many nodes the tool looks for; before it is started.
    void SetNodes(int count);

    /// Starts the tool and shows its window.
    void StartTool();
    /// Starts both and connects.
    void StartConnected(const char* scenario = "quiet\n");
    /// Closes the window as a user does and lets the tool go.
    void CloseTool();

    /// Clicks a button of a bar: Click("Toolbar", "Connect"). Returns when what it does is done.
    void Click(const char* bar, const char* key);
    /// Clicks the button of a node from 1 to 16.
    void ClickNode(int number);
    /// Downloads a node with its names, by the toolbar.
    void DownloadNode(int number);
    [[nodiscard]] bool IsEnabled(const char* bar, const char* key) const;
    [[nodiscard]] bool IsVisible(const char* bar, const char* key) const;

    template <typename Widget>
    [[nodiscard]] Widget& Find(const char* name) const
    {
        auto* widget = program->MainWindow()->findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return *widget;
    }

    /// A label's text: "txtMsg".
    [[nodiscard]] std::string Text(const char* label) const;

    /// A property of a picture: Face("PicMiscFace", "dimText").
    [[nodiscard]] std::string Face(const char* name, const char* property = "text") const;

    /// One line of the message list, as "Horn|On|False|7|Raw|icon".
    [[nodiscard]] std::string Line(int row) const;
    [[nodiscard]] int LineCount() const;
    [[nodiscard]] std::vector<std::string> LinesFrom(int row) const;

    /// Runs the event loop until that holds; false if it takes unreasonably long.
    [[nodiscard]] static bool Eventually(const std::function<bool()>& holds);

    PortableCopy copy;
    VehicleProcess vehicle{copy};
    BoxWatcher boxes;
    std::unique_ptr<MMain> program;

private:
    [[nodiscard]] QAction& Action(const char* bar, const char* key) const;
    [[nodiscard]] QAbstractItemModel& List() const;
};

}  // namespace fenrik
