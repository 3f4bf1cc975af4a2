// SPDX-License-Identifier: MIT
#include "LibTools/W32RegistryService.h"

#include <QString>
#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace {

// The store that this one replaces is read with a buffer of 2000 bytes, the terminator included.
constexpr int maxValueUnits = 999;

QString StoreKey(std::wstring key, const std::wstring& name)
{
    std::replace(key.begin(), key.end(), L'\\', L'/');
    QStringList parts = QString::fromStdWString(key).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    // A slash in a name would open a group of its own.
    parts += QString::fromLatin1(QUrl::toPercentEncoding(QString::fromStdWString(name)));
    return parts.join(QLatin1Char('/'));
}

} // namespace

W32RegistryService::W32RegistryService(std::wstring root)
    : RegistryService(std::move(root))
    , store_(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Zentri"),
             QStringLiteral("Registry"))
{
    store_.setFallbacksEnabled(false);
}

void W32RegistryService::WriteString(const std::wstring& name, const std::wstring& value)
{
    store_.setValue(StoreKey(rootKey, name), QString::fromStdWString(value));
    store_.sync();
}

bool W32RegistryService::ReadString(const std::wstring& name, std::wstring& value,
                                    const std::wstring& subKey)
{
    const QString key = StoreKey(subKey.empty() ? rootKey : subKey, name);
    if (!store_.contains(key))
        return false;
    const QString text = store_.value(key).toString();
    if (text.size() > maxValueUnits)
        return false;
    value = text.toStdWString();
    return true;
}

bool W32RegistryService::DeleteValue(const std::wstring& name)
{
    const QString key = StoreKey(rootKey, name);
    if (!store_.contains(key))
        return false;
    store_.remove(key);
    store_.sync();
    return store_.status() == QSettings::NoError;
}
