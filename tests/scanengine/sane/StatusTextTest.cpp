#include "scanengine/drivers/sane/StatusText.h"

#include "tests/Printers.h"

#include <QSet>
#include <gtest/gtest.h>

namespace scanengine {
namespace {

TEST(StatusText, WordOfTheSavedPagesJoinsTheAdvice)
{
    const QString jam = statusText(SaneStatus::jammed);
    EXPECT_EQ(withSavedPages(jam, 0),
              QStringLiteral("The feeder is jammed. Clear it and scan again."));
    EXPECT_EQ(withSavedPages(jam, 1), QStringLiteral("The feeder is jammed. Clear it and scan "
                                                     "again; the page before it is saved."));
    EXPECT_EQ(withSavedPages(jam, 4), QStringLiteral("The feeder is jammed. Clear it and scan "
                                                     "again; the 4 pages before it are saved."));
}

/// At least two sentences, what is wrong and what to do, without the words of programmers.
bool isAdvice(const QString &text)
{
    return text.contains(u". ") && text.endsWith(u" again.") && !text.contains(u"SANE") &&
           !text.contains(u"status");
}

TEST(StatusText, EveryFaultHasAdviceOfItsOwn)
{
    constexpr int unheardOf = 99;
    QStringList texts{statusText(SaneStatus(unheardOf))};
    for (int status = int(SaneStatus::unsupported); status <= int(SaneStatus::accessDenied);
         ++status) {
        // The end of data is no fault, and if it comes as one, nobody knows why.
        if (SaneStatus(status) != SaneStatus::endOfData)
            texts.append(statusText(SaneStatus(status)));
    }
    for (int trouble = 0; trouble <= int(WorkerTrouble::serverLost); ++trouble)
        texts.append(troubleText(WorkerTrouble(trouble)));
    for (const QString &text : std::as_const(texts))
        EXPECT_TRUE(isAdvice(text)) << text.toStdString();
    EXPECT_EQ(QSet<QString>(texts.begin(), texts.end()).size(), texts.size());
}

} // namespace
} // namespace scanengine
