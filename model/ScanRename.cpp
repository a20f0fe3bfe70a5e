#include "model/FileMove.h"
#include "model/ScanFiles.h"
#include "pipeline/RawStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace velmor::ScanFiles {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(velmor::ScanFiles)
};

/// The most bytes that file systems take for a name.
constexpr qsizetype longestName = 255;

/// What is meant by a name as typed.
QString stemOf(const QString &typed)
{
    QString stem;
    std::ranges::copy_if(typed, std::back_inserter(stem),
                         [](QChar c) { return c.category() != QChar::Other_Control; });
    stem = stem.trimmed();
    if (stem.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        stem = stem.chopped(4).trimmed();
    return stem;
}

/// What speaks against a name, whatever files there are.
QString problemOf(const QString &stem, const QString &fileName)
{
    if (stem.isEmpty())
        return Texts::tr("A scan needs a name");
    if (stem.contains(u'/'))
        return Texts::tr("A name can't contain “/”");
    if (stem.startsWith(u'.'))
        return Texts::tr("A name can't begin with a dot");
    if (QFile::encodeName(fileName).size() > longestName)
        return Texts::tr("This name is too long");
    return {};
}

/// The files beside `file`, itself left out, that share the sidecar of a scan called `stem`.
bool hasNamesake(const QFileInfo &file, const QString &stem)
{
    const QFileInfoList entries =
        file.dir().entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System);
    return std::ranges::any_of(entries, [&](const QFileInfo &entry) {
        return entry.completeBaseName() == stem && entry.suffix().toLower() == u"pdf" &&
               entry.fileName() != file.fileName();
    });
}

} // namespace

Renaming rename(AppModel &model, const QUrl &file, const QString &name)
{
    const QFileInfo old(file.toLocalFile());
    const QString stem = stemOf(name);
    const QString fileName = stem + u'.' + old.suffix();
    if (const QString problem = problemOf(stem, fileName); !problem.isEmpty())
        return {file, problem};
    const QString path = old.dir().filePath(fileName);
    if (path == old.filePath())
        return {file, {}};

    const QUrl renamed = QUrl::fromLocalFile(path);
    const QString taken = Texts::tr("There is a scan of this name already");
    const QString failed = Texts::tr("Couldn't rename — folder isn't writable");
    if (!old.exists())
        return {file, Texts::tr("This scan isn't there any more")};
    if (hasNamesake(old, stem))
        return {file, taken};
    const FileMove move = moveFile(old.filePath(), path);
    if (move != FileMove::done)
        return {file, move == FileMove::taken ? taken : failed};
    if (hasNamesake(QFileInfo(path), fileStem(file))) {
        // Raw pages that serve a namesake as well stay with that one. Those that a former scan of
        // the new name left behind aren't this one's.
        RawStore::remove(renamed);
    } else if (!RawStore::move(file, renamed) && moveFile(path, old.filePath()) == FileMove::done) {
        return {file, failed};
    }
    model.followRename(file, renamed);
    return {renamed, {}};
}

} // namespace velmor::ScanFiles
