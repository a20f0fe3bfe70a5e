#include "i18n/Translations.h"

#include "model/AppModel.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <gmock/gmock.h>

namespace velmor {
namespace {

/// The texts in a translation file that lack a translation, or a form of it.
QStringList untranslated(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {QStringLiteral("no file ") + path};
    QXmlStreamReader xml(&file);
    QStringList missing;
    QString source;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == u"source")
            source = xml.readElementText();
        else if (xml.name() == u"translation" && xml.attributes().hasAttribute(u"type"_qs))
            missing.append(source);
        else if (xml.name() == u"numerusform" && xml.readElementText().isEmpty())
            missing.append(source);
    }
    if (xml.hasError())
        missing.append(xml.errorString());
    return missing;
}

TEST(TranslationsTest, GermanHasEveryTextOfTheProgram)
{
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("velmor_de.ts"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(GERMAN), copy));
    QStringList extraction = QString::fromUtf8(EXTRACTION).split(u'|');
    const QString program = extraction.takeFirst();
    ASSERT_EQ(QProcess::execute(program, extraction + QStringList{u"-ts"_qs, copy}), 0);
    EXPECT_THAT(untranslated(copy), testing::IsEmpty());

    QFile before(QStringLiteral(GERMAN));
    QFile after(copy);
    ASSERT_TRUE(before.open(QIODevice::ReadOnly) && after.open(QIODevice::ReadOnly));
    EXPECT_EQ(before.readAll(), after.readAll()) << "build the target `translations`";
}

TEST(TranslationsTest, TheLanguageOfTheDesktopIsSpoken)
{
    const struct {
        QLocale locale;
        QString one, many;
    } cases[] = {
        {QLocale(QLocale::English), u"Saved 1 page"_qs,        u"Saved 3 pages"_qs       },
        {QLocale(QLocale::Finnish), u"Saved 1 page"_qs,        u"Saved 3 pages"_qs       },
        {QLocale(QLocale::German),  u"1 Seite gespeichert"_qs, u"3 Seiten gespeichert"_qs},
    };
    for (const auto &c : cases) {
        installTranslations(*QCoreApplication::instance(), c.locale);
        EXPECT_EQ(savedText(1), c.one);
        EXPECT_EQ(savedText(3), c.many);
    }
    EXPECT_EQ(AppModel().statusText(), u"Bereit");
    EXPECT_EQ(title(DocumentType::document), u"Document") << "files are named in English";
}

} // namespace
} // namespace velmor
