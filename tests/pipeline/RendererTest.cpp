#include "pipeline/Renderer.h"

#include "pipeline/workers/WorkerProgram.h"
#include "tests/Waiting.h"
#include "tests/pipeline/TestPages.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <thread>

namespace velmor {
namespace {

Renderer::Setup setup(std::chrono::milliseconds limit = std::chrono::minutes(2))
{
    return {.workerProgram = workerProgram(QStringLiteral("velmor-renderer"), "VELMOR_RENDERER"),
            .pictureLimit = limit,
            .glimpseLimit = limit,
            .textLimit = limit};
}

/// A file of one page with this content and these resources.
QByteArray pageFile(const QByteArray &content, const QByteArray &resources = {})
{
    return "%PDF-1.5\n1 0 obj <</Type /Catalog /Pages 2 0 R>> endobj\n"
           "2 0 obj <</Type /Pages /Kids [3 0 R] /Count 1>> endobj\n"
           "3 0 obj <</Type /Page /Parent 2 0 R /MediaBox [0 0 100 100] /Contents 4 0 R "
           "/Resources <<" +
           resources + ">> >> endobj\n4 0 obj <</Length " + QByteArray::number(content.size()) +
           ">> stream\n" + content + "\nendstream endobj\n" + "trailer <</Root 1 0 R>>\n";
}

QByteArray whitePage()
{
    return pageFile("1 1 1 rg 0 0 100 100 re f");
}

/// A page that takes far longer to draw than any test: forms that show the next one many times.
QByteArray endlessPage()
{
    QByteArray file = pageFile("/F0 Do", "/XObject <</F0 10 0 R>>");
    QByteArray forms;
    for (int depth = 0; depth < 12; ++depth) {
        QByteArray content;
        for (int i = 0; i < 40; ++i)
            content += "/F Do 0 0 9 9 re f ";
        forms += QByteArray::number(10 + depth) +
                 " 0 obj <</Type /XObject /Subtype /Form /BBox [0 0 100 100] /Resources <</XObject "
                 "<</F " +
                 QByteArray::number(11 + depth) + " 0 R>> >> /Length " +
                 QByteArray::number(content.size()) + ">> stream\n" + content +
                 "\nendstream endobj\n";
    }
    return file.replace("trailer", forms + "trailer");
}

TEST(Renderer, OutlivesAPageThatNeverEnds)
{
    Renderer renderer(setup(std::chrono::seconds(2)));
    ASSERT_TRUE(renderer.picture(whitePage(), {10, 10}));
    EXPECT_FALSE(renderer.picture(endlessPage(), {500, 500}));
    EXPECT_TRUE(renderer.picture(whitePage(), {10, 10})) << "the worker was replaced";
}

TEST(Renderer, AWorkerThatWasEndedWhileIdleCostsNoAnswer)
{
    const QTemporaryDir folder;
    const QString pidFile = folder.filePath(QStringLiteral("pid"));
    const QString program =
        writeFile(folder.filePath(QStringLiteral("renderer")),
                  "#!/bin/sh\necho $$ > " + QFile::encodeName(pidFile) + "\nexec " +
                      QFile::encodeName(setup().workerProgram) + '\n');
    ASSERT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    Renderer renderer({.workerProgram = program});
    ASSERT_TRUE(renderer.picture(whitePage(), {10, 10}));
    kill(readFile(pidFile).trimmed().toInt(), SIGKILL);
    EXPECT_TRUE(renderer.picture(whitePage(), {10, 10}));
    EXPECT_FALSE(renderer.picture("no PDF", {10, 10}));
}

TEST(Renderer, DrawsOthersBesideALongPageAndClosesInTheMidstOfIt)
{
    Renderer renderer(setup());
    std::atomic<bool> isDrawing = false;
    std::atomic<bool> isDone = false;
    std::thread drawing([&] {
        EXPECT_TRUE(renderer.picture(whitePage(), {10, 10}));
        isDrawing = true;
        EXPECT_FALSE(renderer.picture(endlessPage(), {500, 500}));
        isDone = true;
    });
    EXPECT_TRUE(waitUntil([&] { return isDrawing.load(); }));
    EXPECT_TRUE(renderer.picture(whitePage(), {10, 10}));
    EXPECT_FALSE(isDone);
    renderer.close(); // just before or while the page is drawn
    EXPECT_TRUE(waitUntil([&] { return isDone.load(); }));
    drawing.join();
    EXPECT_FALSE(renderer.picture(whitePage(), {10, 10}));
}

TEST(Renderer, HasNothingWithoutItsProgram)
{
    Renderer renderer({.workerProgram = QStringLiteral("/nowhere/velmor-renderer")});
    EXPECT_FALSE(renderer.picture(whitePage(), {10, 10}));
    EXPECT_FALSE(renderer.text({whitePage()}));
}

TEST(Renderer, AnswersNothingForFilesThatAreNoPages)
{
    Renderer renderer(setup());
    for (const QByteArray &file : {QByteArray(), QByteArray("no PDF"), whitePage().left(200)}) {
        EXPECT_FALSE(renderer.picture(file, {10, 10}));
        EXPECT_FALSE(renderer.text({file}));
        EXPECT_FALSE(renderer.textPosition({file, {}, {}}));
    }
    EXPECT_TRUE(renderer.picture(whitePage(), {10, 10}));
}

TEST(Renderer, TrustsNoWorker)
{
    const RendererRequest request = DrawRequest{
        "%PDF", {3, 4}
    };
    const RendererAnswer answer = PageTextAnswer{QStringLiteral("text"), {{1, 2, 3, 4}}};
    EXPECT_EQ(decodeRendererRequest(encode(request)), request);
    EXPECT_EQ(decodeRendererAnswer(encode(answer)), answer);
    for (qsizetype kept = 0; kept < encode(answer).size(); ++kept)
        EXPECT_FALSE(decodeRendererAnswer(encode(answer).left(kept))) << kept;
    EXPECT_FALSE(decodeRendererAnswer(encode(answer) + '\0'));
    EXPECT_FALSE(decodeRendererAnswer(encode(RendererAnswer(DrawnAnswer{
        {0, 4}
    }))));
    EXPECT_FALSE(decodeRendererAnswer(encode(RendererAnswer(TextPositionAnswer{-1}))));
    EXPECT_FALSE(decodeRendererRequest(encode(RendererRequest(PageTextRequest{{}, -1, 2}))));
}

} // namespace
} // namespace velmor
