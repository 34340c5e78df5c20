#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class Composer;
}

namespace fenrik {

struct CMessage;
struct Services;

/// What the composer asks of the window around it.
class ComposerHost {
public:
    virtual ~ComposerHost() = default;
    virtual void SetUIState(int state) = 0;
    [[nodiscard]] virtual bool IsConnected() const = 0;
    [[nodiscard]] virtual bool IsReady() const = 0;  ///< no exchange is under way
    virtual void OpenSpecialCommand(const CMessage& message) = 0;
    /// A command was sent: the states view may poll.
    virtual void CommandSent() = 0;
    virtual void SelectLastLine() = 0;
};

/// The row under the message list in which a command is put together and sent (`PicMsgcenter`).
class Composer : public QWidget {
    Q_OBJECT

public:
    /// A category of its own, which stands in no catalogue: TxtData is one byte and no command.
    static constexpr const char* kSendByte = "<Send Byte>";

    explicit Composer(const Services& services, QWidget* parent = nullptr);
    ~Composer() override;

    /// Before the first click: `host` outlives the clicks.
    void Attach(ComposerHost& host) { mHost = &host; }

    /// Lists the catalogue's categories anew, by the options; `hiddenCategory` is the market's.
    void PopulatecboCategoryList(const QString& hiddenCategory);

    /// Takes a line of the message list over for sending it again; a special command opens its window, unless an
    /// exchange is under way. False, and nothing is taken, if the lists don't offer the command.
    bool ShowMessage(const CMessage& message);

    /// Puts a command together with data 0 and no three-way flag, ready to be sent. False, and nothing changes, if the
    /// lists don't offer it.
    bool ShowCommand(int command, bool on);

    /// Sets all fields and presses "Send", as an operator would. Throws Error 9, with nothing sent, if the lists don't
    /// offer the command.
    void SendAs(int command, bool on, bool extended, const QString& dataText);

    void SetSendEnabled(bool enabled);

    /// The width of its wider half: in a narrow window the halves stand one below the other.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetUpButtons();
    void ShowCategory(const QString& category);
    [[nodiscard]] bool SelectCommand(int command);
    void Send();
    void SendByte();
    void SendCommand();
    void Toggle(bool state);
    void SetFields(bool on, bool extended, const QString& dataText);
    [[nodiscard]] CMessage ComposedMessage() const;

    const Services& mServices;
    ComposerHost* mHost = nullptr;
    std::unique_ptr<Ui::Composer> mUi;
};

}  // namespace fenrik
