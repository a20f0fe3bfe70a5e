#include "pipeline/PageRaster.h"
#include "pipeline/PdfNumber.h"
#include "pipeline/PdfPageData.h"
#include "pipeline/TextLayer.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

namespace velmor {

/// Builds the one page of a new document. QPDF's errors are the caller's to catch.
class PdfPageBuilder {
public:
    PdfPageBuilder() : m_file(emptyFile()) {}

    PdfPage build(const EncodedImage &image, QSizeF size, const TextLayer &text)
    {
        QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
        resources.replaceKey("/XObject", dictionary({
                                             {"/Im0", imageStream(image)}
        }));
        if (!text.operators.isEmpty())
            resources.replaceKey("/Font", fonts(text));

        QPDFObjectHandle page = QPDFObjectHandle::newDictionary();
        page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
        page.replaceKey("/MediaBox", QPDFObjectHandle::newArray(QPDFObjectHandle::Rectangle(
                                         0, 0, size.width(), size.height())));
        page.replaceKey("/Resources", resources);
        page.replaceKey("/Contents", stream(imageOperators(size) + text.operators));
        m_file->addPage(m_file->makeIndirectObject(page), false);
        return {m_file, m_file->getAllPages().front()};
    }

private:
    using Entry = std::pair<const char *, QPDFObjectHandle>;

    static QPDFObjectHandle dictionary(std::initializer_list<Entry> entries)
    {
        QPDFObjectHandle result = QPDFObjectHandle::newDictionary();
        for (const auto &[key, value] : entries)
            result.replaceKey(key, value);
        return result;
    }

    QPDFObjectHandle stream(const QByteArray &bytes)
    {
        return QPDFObjectHandle::newStream(m_file.get(), bytes.toStdString());
    }

    /// The image over the whole box, smaller by a millionth around its centre: renderers that
    /// round outwards would otherwise resample it to one pixel more.
    static QByteArray imageOperators(QSizeF size)
    {
        constexpr double inset = 1e-6;
        const double width = size.width() * (1 - inset);
        const double height = size.height() * (1 - inset);
        return "q " + pdfNumber(width) + " 0 0 " + pdfNumber(height) + ' ' +
               pdfNumber((size.width() - width) / 2) + ' ' +
               pdfNumber((size.height() - height) / 2) + " cm /Im0 Do Q\n";
    }

    QPDFObjectHandle imageStream(const EncodedImage &image)
    {
        const char *space = image.channels == 1   ? "/DeviceGray"
                            : image.channels == 3 ? "/DeviceRGB"
                                                  : "/DeviceCMYK";
        const bool isJpeg = image.filter == EncodedImage::Filter::jpeg;
        QPDFObjectHandle result = stream(image.bytes);
        QPDFObjectHandle entries = result.getDict();
        entries.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
        entries.replaceKey("/Subtype", QPDFObjectHandle::newName("/Image"));
        entries.replaceKey("/Width", QPDFObjectHandle::newInteger(image.size.width()));
        entries.replaceKey("/Height", QPDFObjectHandle::newInteger(image.size.height()));
        entries.replaceKey("/BitsPerComponent", QPDFObjectHandle::newInteger(8));
        entries.replaceKey("/ColorSpace", QPDFObjectHandle::newName(space));
        entries.replaceKey("/Filter",
                           QPDFObjectHandle::newName(isJpeg ? "/DCTDecode" : "/FlateDecode"));
        if (image.inverted)
            entries.replaceKey("/Decode", QPDFObjectHandle::parse("[1 0 1 0 1 0 1 0]"));
        return result;
    }

    QPDFObjectHandle fonts(const TextLayer &text)
    {
        QPDFObjectHandle result = QPDFObjectHandle::newDictionary();
        if (text.usesHelvetica) {
            result.replaceKey(TextLayer::helveticaName,
                              m_file->makeIndirectObject(QPDFObjectHandle::parse(
                                  "<</Type /Font /Subtype /Type1 /BaseFont /Helvetica"
                                  " /Encoding /WinAnsiEncoding>>")));
        }
        if (!text.glyphless.isEmpty())
            result.replaceKey(TextLayer::glyphlessName, compositeFont(text.glyphless));
        return result;
    }

    QPDFObjectHandle compositeFont(const GlyphlessFont &font)
    {
        const QByteArray file = font.trueTypeFile();
        QPDFObjectHandle fontFile = stream(file);
        fontFile.getDict().replaceKey("/Length1", QPDFObjectHandle::newInteger(file.size()));
        QPDFObjectHandle descriptor = QPDFObjectHandle::parse(
            "<</Type /FontDescriptor /FontName /AAAAAA+Glyphless /Flags 4"
            " /FontBBox [0 0 1000 1000] /ItalicAngle 0 /Ascent 1000 /Descent -200"
            " /CapHeight 1000 /StemV 80>>");
        descriptor.replaceKey("/FontFile2", fontFile);

        QPDFObjectHandle descendant = QPDFObjectHandle::parse(
            "<</Type /Font /Subtype /CIDFontType2 /BaseFont /AAAAAA+Glyphless"
            " /CIDSystemInfo <</Registry (Adobe) /Ordering (Identity) /Supplement 0>>"
            " /DW 1000 /CIDToGIDMap /Identity>>");
        descendant.replaceKey("/FontDescriptor", m_file->makeIndirectObject(descriptor));
        descendant.replaceKey("/W", widths(font));

        QPDFObjectHandle result =
            QPDFObjectHandle::parse("<</Type /Font /Subtype /Type0 /BaseFont /AAAAAA+Glyphless"
                                    " /Encoding /Identity-H>>");
        result.replaceKey("/DescendantFonts",
                          QPDFObjectHandle::newArray({m_file->makeIndirectObject(descendant)}));
        result.replaceKey("/ToUnicode", stream(font.toUnicodeMap()));
        return m_file->makeIndirectObject(result);
    }

    /// Widths of the glyphs from 1 on, in the form "1 [w w w]".
    static QPDFObjectHandle widths(const GlyphlessFont &font)
    {
        QPDFObjectHandle list = QPDFObjectHandle::newArray();
        for (const char32_t character : font.characters())
            list.appendItem(QPDFObjectHandle::newInteger(GlyphlessFont::advanceWidth(character)));
        return QPDFObjectHandle::newArray({QPDFObjectHandle::newInteger(1), list});
    }

    std::shared_ptr<QPDF> m_file;
};

std::optional<PdfPage> PageRaster::makePage(const EncodedImage &image, QSizeF size,
                                            std::span<const OcrLine> lines)
{
    if (!(size.width() > 0) || !(size.height() > 0) || image.size.isEmpty())
        return std::nullopt;
    try {
        return PdfPageBuilder().build(image, size, textLayer(lines, size));
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

} // namespace velmor
