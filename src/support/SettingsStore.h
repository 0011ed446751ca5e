#pragma once

#include <QString>

class QSettings;

/// The per-user store of what the user chose once and for all: texts under a section and a key.
///
/// A value is written through at once, so that a crash later in the run loses none.
class SettingsStore
{
public:
    /// The name under which main opens the store.
    static constexpr char applicationKey[] = "Larkspin";

    explicit SettingsStore(QSettings& settings);

    QString GetSetting(const QString& section, const QString& key, const QString& defaultValue) const;
    void SaveSetting(const QString& section, const QString& key, const QString& value);

private:
    QSettings& settings;
};
