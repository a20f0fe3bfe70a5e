#pragma once

#include <QFile>
#include <QString>
#include <gtest/gtest.h>

#include <array>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velmor {

/// While it lives, this thread may not write into a folder, even as the superuser.
class DeniedFolder {
public:
    explicit DeniedFolder(const QString &path)
        : m_path(path), m_permissions(QFile::permissions(path))
    {
        EXPECT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
        EXPECT_EQ(syscall(SYS_capget, &m_header, m_former.data()), 0);
        Capabilities less = m_former;
        less[0].effective &= ~(1U << CAP_DAC_OVERRIDE);
        EXPECT_EQ(syscall(SYS_capset, &m_header, less.data()), 0);
    }
    ~DeniedFolder()
    {
        syscall(SYS_capset, &m_header, m_former.data());
        QFile::setPermissions(m_path, m_permissions);
    }
    Q_DISABLE_COPY_MOVE(DeniedFolder)

private:
    using Capabilities = std::array<__user_cap_data_struct, 2>;

    QString m_path;
    QFile::Permissions m_permissions;
    __user_cap_header_struct m_header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    Capabilities m_former{};
};

} // namespace velmor
