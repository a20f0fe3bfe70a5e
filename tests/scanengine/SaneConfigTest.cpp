#include "scanengine/drivers/sane/SaneConfig.h"

#include "TestImages.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace scanengine {
namespace {

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

TEST(SaneConfig, FoldersAreThoseThatSaneLooksInto)
{
    const struct {
        const char *setting;
        const char *folders;
    } cases[] = {
        {"",       ". /etc/sane.d"      },
        {"/a",     "/a"                 },
        {"/a:/b",  "/a /b"              },
        {"/a:",    "/a . /etc/sane.d"   },
        {"/a:/b:", "/a /b . /etc/sane.d"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(saneConfigFolders(QString::fromUtf8(c.setting)), words(c.folders)) << c.setting;
    }
}

TEST(SaneConfig, BackendsComeFromTheFirstFolderThatHasThem)
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    putFile(first.filePath(QStringLiteral("dll.conf")),
            "# comment\n\n  genesys  \nnet # scanner servers\n#test\r\ngenesys\npixma");
    putFile(second.filePath(QStringLiteral("dll.conf")), "epson2\n");
    ASSERT_TRUE(QDir(second.path()).mkdir(QStringLiteral("dll.d")));
    putFile(second.filePath(QStringLiteral("dll.d/airscan")), "airscan\n");
    putFile(second.filePath(QStringLiteral("dll.d/hpaio~")), "hpaio\n");
    EXPECT_EQ(configuredBackends({QStringLiteral("/none"), first.path(), second.path()}),
              words("genesys net pixma airscan"));
    EXPECT_EQ(configuredBackends({QStringLiteral("/none")}), QStringList());
}

TEST(SaneConfig, CamerasAndTheSecondWayToAScannerAreNotSearched)
{
    EXPECT_EQ(scannerBackends(words("net escl v4l pixma airscan")), words("net pixma airscan"));
    EXPECT_EQ(scannerBackends(words("net escl gphoto2")), words("net escl"));
}

} // namespace
} // namespace scanengine
