#include "shell/AppInfo.h"

#include <QCoreApplication>

namespace velmor::AppInfo {

namespace {

struct AboutText {
    Q_DECLARE_TR_FUNCTIONS(AboutText)
};

QList<Line> bundleCredits()
{
    return {
        {AboutText::tr("Scanning engine powered by NAPS2.Sdk")},
        {AboutText::tr("© Ben Olden-Cooligan and the NAPS2.Sdk contributors"), 10, QFont::Normal,
         true},
        {AboutText::tr("NAPS2.Sdk is licensed under the GNU LGPL 2.1 (or later);"), 10,
         QFont::Normal, true},
        {AboutText::tr("NAPS2.Wia is licensed under the MIT license."), 10, QFont::Normal, true},
        {AboutText::tr("The engine runs as a separate process (scanengine.app)."), 10,
         QFont::Normal, true},
        {AboutText::tr("Source code: %1").arg(u"https://github.com/cyanfish/naps2"), 10,
         QFont::Normal, true},
    };
}

QList<Line> ownCredits()
{
    return {
        {AboutText::tr("Scanning engine powered by SANE")},
        {AboutText::tr("© the authors of SANE, sane-airscan, OpenCV, libpng and Qt"), 10,
         QFont::Normal, true},
        {AboutText::tr("SANE and sane-airscan are licensed under the GNU GPL 2 (or later) with an "
                       "exception for their use by other programs;"),
         10, QFont::Normal, true},
        {AboutText::tr("OpenCV is licensed under the Apache License 2.0, libpng under its own, "
                       "Qt under the GNU LGPL 3."),
         10, QFont::Normal, true},
        {AboutText::tr("The engine runs as a separate process (scanengine)."), 10, QFont::Normal,
         true},
        {AboutText::tr("Source code: %1")
             .arg(u"sane-project.org, github.com/alexpevzner/sane-airscan, opencv.org, libpng.org, "
                  u"qt.io"),
         10, QFont::Normal, true},
    };
}

} // namespace

QString tagline()
{
    return AboutText::tr("Velmor — the only scanner app you need.");
}

QString version()
{
    const QString built = QCoreApplication::applicationVersion();
    return built.isEmpty() ? QStringLiteral("0.1.710") : built;
}

EngineKind engineKind(const std::optional<QString> &path)
{
    const bool bundle = path && path->endsWith(u"/scanengine.app/Contents/MacOS/scanengine");
    return bundle ? EngineKind::bundle : EngineKind::own;
}

QList<Line> aboutLines(EngineKind engine)
{
    const QList<Line> head{
        {tagline(),                                  12, QFont::DemiBold, false},
        {AboutText::tr("Version %1").arg(version()), 11, QFont::Normal,   true },
        {QString(),                                  4,  QFont::Normal,   false},
    };
    return head + (engine == EngineKind::bundle ? bundleCredits() : ownCredits());
}

} // namespace velmor::AppInfo
