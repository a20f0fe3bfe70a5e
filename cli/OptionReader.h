#pragma once

#include "cli/CommandLine.h"

#include <QCommandLineParser>

namespace velmor {

/// Reads the options of one command. The first thing that is wrong is kept, and what is read after
/// it doesn't count.
class OptionReader {
public:
    OptionReader(const QString &command, const QString &description);

    /// Lets files follow the options.
    void addFiles();

    /// Lets one file follow the options.
    void addFile();

    void add(const QString &name, const QString &description, const QString &value = {});

    void parse(const QStringList &arguments);

    [[nodiscard]] QList<QUrl> files() const;

    /// A number within limits.
    [[nodiscard]] std::optional<double> number(const QString &name, double least, double most);

    /// A whole number of at least 1.
    [[nodiscard]] std::optional<int> ordinal(const QString &name);

    /// A region for each time that the option is given, which must be at least once.
    [[nodiscard]] QList<Quad> quads(const QString &name);

    [[nodiscard]] bool wantsHelp() const { return m_parser.isSet(QStringLiteral("help")); }
    /// With the command in the first line, which Qt would fill with the program's path.
    [[nodiscard]] QString helpText() const;
    [[nodiscard]] const std::optional<QString> &problem() const { return m_problem; }

    [[nodiscard]] std::optional<QString> text(const QString &name);

    /// The member of `all` whose word the option gives.
    template <typename Values, typename Word>
    [[nodiscard]] auto oneOf(const QString &name, const Values &all, Word word)
        -> std::optional<typename Values::value_type>
    {
        const std::optional<QString> given = text(name);
        if (!given)
            return {};
        QStringList words;
        for (const auto value : all) {
            if (word(value) == *given)
                return value;
            words.append(word(value));
        }
        fail(QStringLiteral("--%1 takes one of %2, not “%3”.")
                 .arg(name, words.join(QLatin1String(", ")), *given));
        return {};
    }

    /// Which of "--name" and "--no-name" comes last.
    [[nodiscard]] std::optional<bool> flag(const QString &name) const;

    [[nodiscard]] SearchLimit searchLimit();

    void addSearchTimeout();

private:
    void fail(const QString &problem);

    QCommandLineParser m_parser;
    QString m_program;
    qsizetype m_mostFiles = 0;
    QString m_fileWord; ///< For the files in the help; empty where none is taken.
    std::optional<QString> m_problem;
};

} // namespace velmor
