#pragma once

#include <QSettings>
#include <QString>

namespace fenrik {

/// The per-user store of settings, by section and key; values are texts. An INI file whose groups are the sections.
class SettingsStore {
public:
    /// `path`: the INI file. It need not exist yet; its folder is made when the first value is saved. One that holds
    /// other things than texts is renamed to `<file>.broken`.
    explicit SettingsStore(const QString& path);

    /// `fenrik-diagnostics/` in the user's configuration home: the folder of settings.ini, window.ini and ports/.
    [[nodiscard]] static QString ConfigFolder();

    [[nodiscard]] QString GetSetting(const QString& section, const QString& key, const QString& defaultValue) const;
    void SaveSetting(const QString& section, const QString& key, const QString& value);

    /// Writes what was saved. The file is replaced as a whole: a full disk leaves the old one. Throws Error 75.
    void Sync();

    /// Copies the file to `<file>.broken`, so that a value that could not be read is not lost by the next save.
    void KeepBrokenCopy();

    [[nodiscard]] QString Path() const;

    /// True if the file was renamed when this was made.
    [[nodiscard]] bool SetAside() const { return mSetAside; }

private:
    bool mSetAside;
    QSettings mFile;
};

}  // namespace fenrik
