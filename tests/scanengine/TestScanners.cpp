#include "TestScanners.h"

#include "TestImages.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <gtest/gtest.h>

#include <algorithm>

namespace scanengine {
namespace {

/// The test backend takes no setting for granted.
const TestScanners::Setting usualSettings[] = {
    {"number_of_devices",   "1"              },
    {"mode",                "Gray"           },
    {"depth",               "8"              },
    {"hand-scanner",        "false"          },
    {"three-pass",          "false"          },
    {"three-pass-order",    "RGB"            },
    {"resolution_min",      "1.0"            },
    {"resolution_max",      "1200.0"         },
    {"resolution_quant",    "1.0"            },
    {"resolution",          "50.0"           },
    {"test-picture",        "\"Solid white\""},
    {"invert-endianess",    "false"          },
    {"read-limit",          "false"          },
    {"read-limit-size",     "1"              },
    {"read-delay",          "false"          },
    {"read-delay-duration", "1000"           },
    {"read-status-code",    "\"Default\""    },
    {"fuzzy-parameters",    "false"          },
    {"ppl-loss",            "0"              },
    {"non-blocking",        "false"          },
    {"select-fd",           "false"          },
    {"enable-test-options", "false"          },
    {"geometry_min",        "0.0"            },
    {"geometry_max",        "200.0"          },
    {"geometry_quant",      "1.0"            },
    {"tl_x",                "0.0"            },
    {"tl_y",                "0.0"            },
    {"br_x",                "80.0"           },
    {"br_y",                "100.0"          },
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TestScanners::TestScanners(std::initializer_list<Setting> settings, const QStringList &backends)
{
    QByteArray content;
    for (const auto &[name, usual] : usualSettings) {
        const auto *changed =
            std::find_if(settings.begin(), settings.end(),
                         [key = name](const Setting &s) { return qstrcmp(s.first, key) == 0; });
        const char *value = changed == settings.end() ? usual : changed->second;
        content += QByteArray(name) + ' ' + value + '\n';
    }
    putFile(m_folder.filePath(QStringLiteral("test.conf")), content);
    putFile(m_folder.filePath(QStringLiteral("dll.conf")), backends.join(u'\n').toUtf8() + '\n');
    EXPECT_TRUE(QDir(m_folder.path()).mkdir(QStringLiteral("dll.d")));
    setBad(m_bad);
}

WorkerLaunch TestScanners::launch() const
{
    WorkerLaunch launch;
    launch.program = QStringLiteral(SCANWORKER_PROGRAM);
    launch.environment = QProcessEnvironment::systemEnvironment();
    launch.environment.insert(QStringLiteral("SANE_CONFIG_DIR"), m_folder.path());
    launch.environment.insert(QStringLiteral("LD_LIBRARY_PATH"),
                              QStringLiteral(BAD_BACKEND_FOLDER));
    launch.environment.insert(QStringLiteral("BAD_BACKEND"),
                              m_folder.filePath(QStringLiteral("fault")));
    launch.memoryLimit = qint64{256} << 20;
    return launch;
}

void TestScanners::setBad(const BadScanner &bad)
{
    m_bad = bad;
    QStringList lines{QStringLiteral("name ") + bad.name};
    if (!bad.fault.isEmpty())
        lines.append(QStringLiteral("fault ") + bad.fault);
    if (bad.sheets)
        lines.append(QStringLiteral("sheets %1").arg(*bad.sheets));
    if (!bad.hasFeeder)
        lines.append(QStringLiteral("flatbed"));
    if (bad.hasSensor)
        lines.append(QStringLiteral("sensor"));
    if (bad.presses)
        lines.append(QStringLiteral("presses %1").arg(*bad.presses));
    // As a whole: the backend may be reading it.
    QSaveFile file(m_folder.filePath(QStringLiteral("fault")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(lines.join(u'\n').toUtf8() + '\n');
    EXPECT_TRUE(file.commit());
}

void TestScanners::setFault(const QString &fault)
{
    BadScanner bad = m_bad;
    bad.fault = fault;
    setBad(bad);
}

bool TestScanners::wasClosed() const
{
    return QFile::exists(m_folder.filePath(QStringLiteral("fault.closed")));
}

QList<pid_t> workersOf(pid_t parent)
{
    QList<pid_t> workers;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(parent));
    for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QByteArray children = contentOf(tasks.filePath(task + QStringLiteral("/children")));
        for (const QByteArray &child : children.simplified().split(' ')) {
            const QByteArray name = contentOf(QStringLiteral("/proc/%1/comm").arg(child.toInt()));
            if (name.startsWith("velmor-scanwork"))
                workers.append(child.toInt());
        }
    }
    return workers;
}

bool hasEnded(pid_t process)
{
    // The state follows the name in brackets: "123 (velmor-scanwork) Z 1".
    const QByteArray state = contentOf(QStringLiteral("/proc/%1/stat").arg(process));
    return state.isEmpty() || state.mid(state.lastIndexOf(')') + 2).startsWith('Z');
}

} // namespace scanengine
