#include "i18n/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace velmor {

void installTranslations(QCoreApplication &application, const QLocale &locale)
{
    const QString underscore = QStringLiteral("_");
    auto *const own = new QTranslator(&application);
    // Qt's texts alone would make a window of two languages.
    if (!own->load(locale, QStringLiteral("velmor"), underscore, QStringLiteral(":/i18n"))) {
        delete own;
        return;
    }
    QCoreApplication::installTranslator(own);

    auto *const ofQt = new QTranslator(&application);
    if (ofQt->load(locale, QStringLiteral("qtbase"), underscore,
                   QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(ofQt);
    else
        delete ofQt;
}

} // namespace velmor
