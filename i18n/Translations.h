#pragma once

#include <QLocale>

class QCoreApplication;

namespace velmor {

/// Has `application` speak the language of `locale`, as far as there is a translation, and Qt's own
/// dialogs with it; English otherwise. Call it once, before any text is made.
void installTranslations(QCoreApplication &application, const QLocale &locale = QLocale());

} // namespace velmor
