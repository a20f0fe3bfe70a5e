#include "PrintedPage.h"

#include "pipeline/PageRenderer.h"

namespace velmor {

namespace {

constexpr QSize a4(2480, 3508);
constexpr int dotsPerMeter = 11'811;

/// A string in a PDF content stream.
QByteArray pdfString(const QString &text)
{
    QByteArray bytes = text.toLatin1();
    for (const char *special : {"\\", "(", ")"})
        bytes.replace(special, QByteArray("\\") + special);
    return '(' + bytes + ')';
}

QByteArray pdfOf(const QStringList &lines)
{
    QByteArray content = "BT /F 12 Tf " + QByteArray::number(printedLeading) + " TL " +
                         QByteArray::number(printedMargin) + ' ' +
                         QByteArray::number(firstBaseline) + " Td\n";
    for (const QString &line : lines)
        content += pdfString(line) + " Tj T*\n";
    content += "ET\n";
    // No cross-reference table: the renderer finds the objects by itself.
    return "%PDF-1.4\n"
           "1 0 obj <</Type /Catalog /Pages 2 0 R>> endobj\n"
           "2 0 obj <</Type /Pages /Kids [3 0 R] /Count 1>> endobj\n"
           "3 0 obj <</Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R\n"
           "/Resources <</Font <</F <</Type /Font /Subtype /Type1 /BaseFont /Helvetica\n"
           "/Encoding /WinAnsiEncoding>>>>>>>> endobj\n"
           "4 0 obj <</Length " +
           QByteArray::number(content.size()) + ">> stream\n" + content +
           "endstream endobj\ntrailer <</Root 1 0 R>>\n";
}

} // namespace

QImage printedPage(const QStringList &lines)
{
    QImage page = renderFirstPage(pdfOf(lines), a4).value_or(QImage());
    page.setDotsPerMeterX(dotsPerMeter);
    page.setDotsPerMeterY(dotsPerMeter);
    return page;
}

} // namespace velmor
