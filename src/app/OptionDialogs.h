#pragma once

class QString;
class QWidget;

namespace fenrik {

class OptionsHost;
struct Services;

/// Opens the windows of options, modal, for either main window and for windows above it.
class OptionDialogs {
public:
    /// Both outlive the object.
    OptionDialogs(const Services& services, OptionsHost& host) : mServices(services), mHost(host) {}

    /// Tries all serial ports but the program's own open one.
    void OpenNetworkOptions(QWidget* parent);

    /// `database` is the path of the present command database; the older network has none to show.
    void OpenToolOptions(QWidget* parent, const QString& database);

    void OpenAbout(QWidget* parent);

private:
    const Services& mServices;
    OptionsHost& mHost;
};

}  // namespace fenrik
