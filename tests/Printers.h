#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <ostream>

/// Lets GoogleTest print Qt's texts as texts.
inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &texts, std::ostream *stream)
{
    for (const QString &text : texts)
        *stream << "\n    \"" << text.toStdString() << '"';
}
