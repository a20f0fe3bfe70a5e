#include "pipeline/recognition/LanguageWords.h"

#include <array>

namespace velmor {

namespace {

using L1 = QLatin1StringView;

constexpr std::array languages{
    LanguageFacts{L1("eng"),     L1("en"), L1("Latin"),
                  u"the of and to in that is was for with as his on be at by this had not are but "
                  u"from or have an they which you were her all she there would their we him been "
                  u"has when who will no more if out so it your our"        },
    LanguageFacts{L1("deu"),     L1("de"), L1("Latin"),
                  u"der die und in den von zu das mit sich des auf für ist im dem nicht ein eine "
                  u"als auch es an werden aus er hat dass sie nach wird bei einer um am sind noch "
                  u"wie einem über einen so zum war haben nur oder aber vor zur bis mehr durch man "
                  u"wir ich ihr ihre uns wurde"                             },
    LanguageFacts{L1("fra"),     L1("fr"), L1("Latin"),
                  u"de la le et les des en un du une que est pour qui dans par plus pas au sur ne "
                  u"se ce il sont avec ou son aux cette ses mais comme on nous vous elle leur être "
                  u"ces sa été je votre notre l d qu n s c"                 },
    LanguageFacts{L1("spa"),     L1("es"), L1("Latin"),
                  u"de la que el en y los del se las por un para con no una su al es lo como más o "
                  u"pero sus le ha me sin sobre este ya entre cuando todo esta son también fue "
                  u"desde muy hasta está nos"                               },
    LanguageFacts{L1("ita"),     L1("it"), L1("Latin"),
                  u"di e il che la in un a per è una del non sono con i da le si della al dei come "
                  u"più nel lo alla gli anche ha delle ma su dal se ci questo o degli nella ed "
                  u"essere dalla ai sua suo l dell"                         },
    LanguageFacts{L1("por"),     L1("pt"), L1("Latin"),
                  u"de a o que e do da em um para com não uma os no se na por mais as dos como mas "
                  u"ao ele das à seu sua ou quando muito nos já também só pelo pela até isso ela "
                  u"entre era depois sem mesmo aos são foi ser"             },
    LanguageFacts{L1("nld"),     L1("nl"), L1("Latin"),
                  u"de van het een en in is dat op te zijn met voor die niet aan er om ook als bij "
                  u"dan maar nog naar uit door over of tot ze wordt je hij deze we heeft kan meer "
                  u"werd worden hebben zou onze geen wat"                   },
    LanguageFacts{L1("pol"),     L1("pl"), L1("Latin"),
                  u"w i z na do nie to się że jest o od po za jak dla przez ale oraz co ze być tym "
                  u"tak był tego może są przy jego już która który które ich czy tylko pod było "
                  u"przed lub ma jej we"                                    },
    LanguageFacts{L1("dan"),     L1("da"), L1("Latin"),
                  u"og i at det er en til af på som med for de den der ikke har et var fra sig han "
                  u"om men vi kan skal eller blev også efter være hun ved"  },
    LanguageFacts{L1("swe"),     L1("sv"), L1("Latin"),
                  u"och i att det som en på är av för med den till inte har de ett om han men var "
                  u"sig från vi så kan när hon eller också efter vid skulle"},
    LanguageFacts{L1("nor"),     L1("no"), L1("Latin"),
                  u"og i det er på til som en av for med at å de har den ikke et om var fra han "
                  u"seg men vi kan skal eller ble også etter være hun ved"  },
    LanguageFacts{L1("fin"),     L1("fi"), L1("Latin"),
                  u"ja on ei se että oli hän ovat mutta kun myös joka jos sen kuin niin hänen tai "
                  u"ole mitä vain olla sitä voi jo siitä jonka"             },
    LanguageFacts{L1("ces"),     L1("cs"), L1("Latin"),
                  u"a v se na je že s z do o to k i za ve by ale jako po od pro jeho jsem jsou jen "
                  u"byl který které při nebo však tak"                      },
    LanguageFacts{L1("hun"),     L1("hu"), L1("Latin"),
                  u"a az és hogy nem is egy meg volt ez csak de már mint el ha még azt van ki vagy "
                  u"mert be fel minden lehet"                               },
    LanguageFacts{L1("ron"),     L1("ro"), L1("Latin"),
                  u"de și în a la cu pe nu un o că din se pentru este mai care au fost ca sau prin "
                  u"iar al ale sunt după lui ce fi"                         },
    LanguageFacts{L1("tur"),     L1("tr"), L1("Latin"),
                  u"ve bir bu da de için ile olarak çok daha olan gibi en o ne kadar sonra ki ya "
                  u"ama var her değil mi"                                   },
    LanguageFacts{L1("rus"),     L1("ru"), L1("Cyrillic"),
                  u"и в не на что с он по как это его к но из у за то так от о для же бы вы был мы "
                  u"она они при или все еще было до если"                   },
    LanguageFacts{L1("ukr"),     L1("uk"), L1("Cyrillic"),
                  u"і в не на що з він як це його до але та у за так від для же ви був ми вона "
                  u"вони при або все ще було якщо й є"                      },
    LanguageFacts{L1("bul"),     L1("bg"), L1("Cyrillic"),
                  u"и в не на че с той по как това го към но от у за да се са е съм беше ние тя те "
                  u"при или все още до ако"                                 },
    LanguageFacts{L1("ell"),     L1("el"), L1("Greek"),      u""            },
    LanguageFacts{L1("ara"),     L1("ar"), L1("Arabic"),     u""            },
    LanguageFacts{L1("fas"),     L1("fa"), L1("Arabic"),     u""            },
    LanguageFacts{L1("heb"),     L1("he"), L1("Hebrew"),     u""            },
    LanguageFacts{L1("chi_sim"), L1("zh"), L1("Han"),        u""            },
    LanguageFacts{L1("chi_tra"), L1("zh"), L1("Han"),        u""            },
    LanguageFacts{L1("jpn"),     L1("ja"), L1("Japanese"),   u""            },
    LanguageFacts{L1("kor"),     L1("ko"), L1("Korean"),     u""            },
    LanguageFacts{L1("hin"),     L1("hi"), L1("Devanagari"), u""            },
    LanguageFacts{L1("tha"),     L1("th"), L1("Thai"),       u""            },
    LanguageFacts{L1("hye"),     L1("hy"), L1("Armenian"),   u""            },
    LanguageFacts{L1("kat"),     L1("ka"), L1("Georgian"),   u""            },
};

} // namespace

std::span<const LanguageFacts> knownLanguages()
{
    return languages;
}

} // namespace velmor
