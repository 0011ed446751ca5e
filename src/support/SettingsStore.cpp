#include "support/SettingsStore.h"

#include <QSettings>

namespace {

QString path(const QString& section, const QString& key)
{
    return section + u'/' + key;
}

}  // namespace

SettingsStore::SettingsStore(QSettings& settings)
    : settings(settings)
{
}

QString SettingsStore::GetSetting(const QString& section, const QString& key, const QString& defaultValue) const
{
    return settings.value(path(section, key), defaultValue).toString();
}

void SettingsStore::SaveSetting(const QString& section, const QString& key, const QString& value)
{
    settings.setValue(path(section, key), value);
    settings.sync();
}
