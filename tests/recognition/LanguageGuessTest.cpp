#include "pipeline/recognition/LanguageGuess.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

QStringList names(std::initializer_list<const char *> list)
{
    QStringList result;
    for (const char *name : list)
        result.append(QString::fromUtf8(name));
    return result;
}

const QStringList &everyLanguage()
{
    static const QStringList all = names(
        {"chi_sim", "deu", "ell", "eng", "fra", "ita", "jpn", "nld", "pol", "por", "rus", "spa"});
    return all;
}

TEST(LanguageGuess, TellsLanguagesOfOneScriptApart)
{
    const struct {
        const char *language; ///< Empty for none.
        const char *what;
        const char *text;
    } cases[] = {
        {"eng", "English",
         "The harbour master wrote in his book that the ship had come in before the storm, and "
         "the owners asked him for a full report of what had been done."                     },
        {"deu", "German whose umlauts an English model lost",
         "Fiir die Eigentiimer war es schon das dritte Mal in diesem Jahr, und sie verlangten von "
         "ihm einen ausfihrlichen Bericht; der Mast muss ersetzt werden."                    },
        {"spa", "Spanish, near to Portuguese",
         "El capitán del puerto escribió en su libro que el barco había llegado antes de la "
         "tormenta y los dueños le pidieron un informe de todo lo que se hizo en la noche."  },
        {"nld", "Dutch, near to German",
         "De havenmeester schreef in zijn boek dat het schip voor de storm was aangekomen, en de "
         "eigenaars vroegen hem om een volledig verslag van wat er met de lading is gebeurd."},
        {"rus", "Russian",
         "Начальник порта записал в своей книге, что корабль пришёл ещё до шторма, и владельцы "
         "попросили его о полном отчёте обо всём, что было на нём."                          },
        {"",    "too few words",                              "The ship and the storm"       },
        {"",    "numbers and names",
         "Berta 12,50 Karl 13,20 Otto 17 Ida 9 Max 4 Emil 8 Anna 5 Paul 6 "
         "Rosa 11 Hugo 14 Olga 3 Willi 2"                                                    },
    };
    for (const auto &c : cases) {
        const auto guess = guessLanguage(QString::fromUtf8(c.text), everyLanguage());
        EXPECT_EQ(guess.value_or(QString()), QString::fromUtf8(c.language)) << c.what;
    }
}

TEST(LanguageGuess, KnowsWhichModelsReadAScript)
{
    const QStringList installed =
        names({"chi_sim", "deu", "eng", "jpn", "osd", "rus", "jpn_vert", "script/Latin", "xyz"});
    const auto languagesFor = [&](const char *script) {
        return languagesForScript(QString::fromUtf8(script), installed);
    };
    EXPECT_EQ(languagesFor("Latin"), names({"deu", "eng"}));
    EXPECT_EQ(languagesFor("Cyrillic"), names({"rus"}));
    EXPECT_EQ(languagesFor("Japanese"), names({"chi_sim", "jpn"}));
    EXPECT_EQ(languagesFor("Thai"), QStringList());
    EXPECT_EQ(readingLanguages(installed), names({"chi_sim", "deu", "eng", "jpn", "rus", "xyz"}));
}

} // namespace
} // namespace velmor
