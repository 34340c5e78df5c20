#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstdint>
#include <optional>

namespace fenrik {

class ErrorReporter;
class RegistryStore;

/// The registry for those who only want to know whether it worked: failures go to the error reporter. Paths and names
/// as in RegistryStore.
class MRegistry {
public:
    /// Both outlive this object.
    MRegistry(RegistryStore& store, ErrorReporter& errors) : mStore(store), mErrors(errors) {}

    /// False as well if the registry can't be read. Tells nobody.
    [[nodiscard]] bool KeyExists(const QString& path) const;

    /// True if the key is there in the end. Tells nobody.
    bool CreateKey(const QString& path);
    bool DeleteKey(const QString& path);

    /// Nothing after a failure, which is reported.
    [[nodiscard]] std::optional<QStringList> GetRegSubKeys(const QString& path) const;

    /// The value, or an invalid one if there is none or after a failure, which is reported.
    [[nodiscard]] QVariant ReadRegKeyValue(const QString& path, const QString& name) const;

    /// False after a failure, which is reported.
    bool WriteRegKeyValue(const QString& path, const QString& name, const QString& text);
    bool WriteRegKeyValue(const QString& path, const QString& name, std::int32_t number);

private:
    RegistryStore& mStore;
    ErrorReporter& mErrors;
};

}  // namespace fenrik
