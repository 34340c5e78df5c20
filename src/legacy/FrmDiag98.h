#pragma once

#include "diagnostics/GlyphSheets.h"
#include "diagnostics/Graphics.h"
#include "legacy/Connection98.h"
#include "legacy/Greeting98.h"
#include "legacy/LegacyServices.h"
#include "legacy/MAF98.h"
#include "legacy/Protocol98.h"

#include <QMainWindow>

#include <memory>

class QSplitter;

namespace fenrik {

class LegacyHost;
class MessageList98;
class MessageListView;
class PicAnalogDisplay;
class StatusLine;
class Toolbar98;
class ToolbarActions98;

/// The main window of the older network: a monitor that listens and sends nothing. Lays the parts out and owns them.
///
/// From top to bottom: toolbar; in a splitter the wide panel with the narrow one beside it, over the list of messages;
/// the status line.
class FrmDiag98 : public QMainWindow, private ConnectionHost98 {
    Q_OBJECT

public:
    FrmDiag98(const LegacyServices& services, LegacyHost& host);
    ~FrmDiag98() override;

    void setMsg(const QString& text);  ///< txtMsg

    /// The choice of the system database, FrmFileDialog.
    void ChooseDatabase();

    [[nodiscard]] Protocol98& Protocol() { return mProtocol; }
    [[nodiscard]] Toolbar98& Toolbar() { return *mToolbar; }
    [[nodiscard]] MessageList98& Messages() { return *mMessages; }
    [[nodiscard]] MAF98& Panels() { return *mPanels; }
    [[nodiscard]] Connection98& Link() { return *mConnection; }

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // ConnectionHost98
    void ShowConnected(bool connected) override;
    void ShowStatus(const QString& text) override;
    void ShowMessage(const QString& text) override { setMsg(text); }

    void SetUpBars();
    void SetUpPanels();
    void SetUpMessages();
    void ShowDatabase();

    const LegacyServices mServices;  // the parts below refer to this one
    LegacyHost& mHost;
    Protocol98 mProtocol;
    GlyphSheets mSheets;
    Toolbar98* mToolbar = nullptr;
    StatusLine* mStatus = nullptr;
    QSplitter* mSplitter = nullptr;
    MessageList98* mMessages = nullptr;
    MessageListView* mList = nullptr;
    std::unique_ptr<Graphics> mGraphics;
    std::unique_ptr<MAF98> mPanels;
    std::unique_ptr<Greeting98> mGreeting;
    std::unique_ptr<Connection98> mConnection;
    std::unique_ptr<ToolbarActions98> mActions;
};

}  // namespace fenrik
