#pragma once

#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstdint>

namespace fenrik {

/// The per-user registry: keys inside keys, and in each key named values that are texts or 32-bit numbers. An INI file
/// whose groups are nested as the keys are.
///
/// A path joins keys by "\", with or without one at its end. In the name of a single key or value "\" and "/" are
/// replaced by "_". All operations throw Error 75 when the file can't be read or written.
class RegistryStore {
public:
    /// `path`: the INI file. It need not exist yet; its folder is made when the first key is created.
    /// One that holds other things than texts and numbers is renamed to `<file>.broken`.
    explicit RegistryStore(const QString& path);

    [[nodiscard]] QString Path() const { return mFile.fileName(); }

    /// True if the file was renamed when this was made.
    [[nodiscard]] bool SetAside() const { return mSetAside; }

    [[nodiscard]] bool KeyExists(const QString& path) const;

    /// Creates the key and those above it; one that exists stays as it is.
    void CreateKey(const QString& path);

    /// Deletes the key with all that is in it.
    void DeleteKey(const QString& path);

    /// Names of the keys right below `path`, in the store's order.
    [[nodiscard]] QStringList SubKeys(const QString& path) const;

    /// The value as it was written, invalid if there is none. The empty name is the key's default value.
    [[nodiscard]] QVariant ReadValue(const QString& path, const QString& name) const;

    void WriteValue(const QString& path, const QString& name, const QString& text);
    void WriteValue(const QString& path, const QString& name, std::int32_t number);

    /// `name` fit to be one part of a path.
    [[nodiscard]] static QString OnePart(const QString& name);

private:
    void Write(const QString& entry, const QVariant& value);
    void Sync();
    void Check() const;

    bool mSetAside;
    QSettings mFile;
};

}  // namespace fenrik
