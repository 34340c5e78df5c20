#include "remote/MRegistry.h"

#include "platform/Error.h"
#include "platform/RegistryStore.h"
#include "shared/ErrorReporter.h"

namespace fenrik {

namespace {

template <typename Body>
bool Quietly(const Body& body)
{
    try {
        return body();
    } catch (const Error&) {
        return false;
    }
}

template <typename Body>
bool Reported(ErrorReporter& errors, const char* where, const Body& body)
{
    try {
        body();
        return true;
    } catch (const Error& error) {
        errors.ShowError(error.Number(), QStringLiteral("Error #%1").arg(error.Number()), QLatin1String(where),
                         error.Description());
        return false;
    }
}

}  // namespace

bool MRegistry::KeyExists(const QString& path) const
{
    return Quietly([&] { return mStore.KeyExists(path); });
}

bool MRegistry::CreateKey(const QString& path)
{
    return Quietly([&] {
        mStore.CreateKey(path);
        return true;
    });
}

bool MRegistry::DeleteKey(const QString& path)
{
    return Quietly([&] {
        mStore.DeleteKey(path);
        return true;
    });
}

std::optional<QStringList> MRegistry::GetRegSubKeys(const QString& path) const
{
    std::optional<QStringList> names;
    Reported(mErrors, "GetRegSubKeys()", [&] { names = mStore.SubKeys(path); });
    return names;
}

QVariant MRegistry::ReadRegKeyValue(const QString& path, const QString& name) const
{
    QVariant value;
    Reported(mErrors, "ReadRegKeyValue()", [&] { value = mStore.ReadValue(path, name); });
    return value;
}

bool MRegistry::WriteRegKeyValue(const QString& path, const QString& name, const QString& text)
{
    return Reported(mErrors, "WriteRegKeyValue()", [&] { mStore.WriteValue(path, name, text); });
}

bool MRegistry::WriteRegKeyValue(const QString& path, const QString& name, std::int32_t number)
{
    return Reported(mErrors, "WriteRegKeyValue()", [&] { mStore.WriteValue(path, name, number); });
}

}  // namespace fenrik
