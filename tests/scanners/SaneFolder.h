#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace scanengine {

/// A configuration of SANE for one test, which nothing of the system's shows through.
class SaneFolder {
public:
    /// `backend` is the only one that is configured, `settings` the content of its "NAME.conf".
    SaneFolder(const QByteArray &backend, const QByteArray &settings);

    void write(const QByteArray &name, const QByteArray &content) const;

    /// What a process needs to have this configuration.
    [[nodiscard]] QProcessEnvironment environment() const;

private:
    QTemporaryDir m_folder;
};

/// The settings of sane-airscan for one scanner alone, "Acme Page" at `url`.
[[nodiscard]] QByteArray airscanSettings(const QString &url);

} // namespace scanengine
