#include "pipeline/recognition/LanguageGuess.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::IsEmpty;

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
    struct Case {
        const char *language; ///< Empty for none.
        const char *what;
        const char *text;
    };
    const Case cases[] = {
        {"eng", "English",
         "The harbour master wrote in his book that the ship had come in before the storm, and "
         "the owners asked him for a full report of what had been done."                       },
        {"deu", "German whose umlauts an English model lost",
         "Fiir die Eigentiimer war es schon das dritte Mal in diesem Jahr, und sie verlangten von "
         "ihm einen ausfihrlichen Bericht; der Mast muss ersetzt werden."                      },
        {"fra", "French",
         "Le capitaine du port écrivit dans son livre que le navire était arrivé avant la "
         "tempête, et les propriétaires lui demandèrent un rapport sur tout ce qui est arrivé."},
        {"spa", "Spanish, near to Portuguese",
         "El capitán del puerto escribió en su libro que el barco había llegado antes de la "
         "tormenta y los dueños le pidieron un informe de todo lo que se hizo en la noche."    },
        {"por", "Portuguese, near to Spanish",
         "O capitão do porto escreveu no seu livro que o navio não tinha chegado antes da "
         "tempestade, e os donos pediram um relatório de tudo o que foi feito na noite."       },
        {"ita", "Italian",
         "Il capitano del porto scrisse nel suo libro che la nave non era arrivata prima della "
         "tempesta, e i proprietari gli chiesero un rapporto di tutto ciò che è stato fatto."  },
        {"nld", "Dutch, near to German",
         "De havenmeester schreef in zijn boek dat het schip voor de storm was aangekomen, en de "
         "eigenaars vroegen hem om een volledig verslag van wat er met de lading is gebeurd."  },
        {"pol", "Polish",
         "Kapitan portu zapisał w swojej księdze, że statek przypłynął jeszcze przed burzą, a "
         "właściciele poprosili go o raport z tego, co się stało na morzu i w porcie."         },
        {"rus", "Russian",
         "Начальник порта записал в своей книге, что корабль пришёл ещё до шторма, и владельцы "
         "попросили его о полном отчёте обо всём, что было на нём."                            },
        {"",    "too few words",                              "The ship and the storm"         },
        {"",    "numbers and names",
         "Berta 12,50 Karl 13,20 Otto 17 Ida 9 Max 4 Emil 8 Anna 5 Paul 6 "
         "Rosa 11 Hugo 14 Olga 3 Willi 2"                                                      },
        {"",    "nothing",                                    ""                               },
    };
    for (const Case &c : cases) {
        const auto guess = guessLanguage(QString::fromUtf8(c.text), everyLanguage());
        EXPECT_EQ(guess.value_or(QString()), QString::fromUtf8(c.language)) << c.what;
    }
}

TEST(LanguageGuess, AnswersOnlyInstalledLanguages)
{
    const QString german = QStringLiteral(
        "Der Hafenmeister schrieb in sein Buch, dass das Schiff noch vor dem Sturm eingelaufen "
        "war, und die Eigentümer verlangten von ihm einen Bericht.");
    EXPECT_EQ(guessLanguage(german, names({"eng", "fra"})), std::nullopt);
}

TEST(LanguageGuess, KnowsWhichModelsReadAScript)
{
    const QStringList installed =
        names({"chi_sim", "deu", "eng", "jpn", "osd", "rus", "jpn_vert", "script/Latin", "xyz"});
    struct Case {
        const char *script;
        QStringList languages;
    };
    const Case cases[] = {
        {"Latin",    names({"deu", "eng"})    },
        {"Cyrillic", names({"rus"})           },
        {"Han",      names({"chi_sim", "jpn"})},
        {"Japanese", names({"chi_sim", "jpn"})},
        {"Thai",     {}                       },
        {"",         {}                       },
    };
    for (const Case &c : cases)
        EXPECT_EQ(languagesForScript(QString::fromUtf8(c.script), installed), c.languages)
            << c.script;
    EXPECT_EQ(readingLanguages(installed), names({"chi_sim", "deu", "eng", "jpn", "rus", "xyz"}));
    EXPECT_THAT(readingLanguages(names({"osd", "equ"})), IsEmpty());
}

TEST(LanguageGuess, BeginsWithTheLocalesLanguage)
{
    EXPECT_EQ(languageForLocale(QStringLiteral("de_AT")), QStringLiteral("deu"));
    EXPECT_EQ(languageForLocale(QStringLiteral("ja")), QStringLiteral("jpn"));
    EXPECT_EQ(languageForLocale(QStringLiteral("C")), QString());
}

} // namespace
} // namespace velmor
