#pragma once

#include <QByteArray>
#include <QRectF>
#include <QUrl>

#include <memory>
#include <optional>

class QIODevice;
class QPDF;
class QPDFObjectHandle;

/// PDF documents and their pages: structure only, no pixels.
///
/// Content streams and image data pass through untouched, byte for byte. Every operation answers;
/// none throws. A document and its pages are used by one thread at a time; they may be handed from
/// one thread to another. Rectangles are in points (1/72 inch), origin at the lower left.
namespace velmor {

class PdfDocument;

/// A document of one page that isn't turned for showing.
struct UprightPage {
    QByteArray pdf;
    QPointF topLeft; ///< The corner of the page in its page space.
};

/// A page of a document: a handle, so copies of it name the same page.
///
/// Keeps its document's data alive for as long as it lives itself.
class PdfPage {
public:
    /// The media box, inherited values included; US letter when the file gives none that serves.
    [[nodiscard]] QRectF mediaBox() const;

    /// The crop box within the media box. The media box itself when the file gives none, or one
    /// that lies outside it or is empty.
    [[nodiscard]] QRectF cropBox() const;

    /// Clockwise degrees as the file states them, inherited values included: 450 stays 450. 0 when
    /// there is no entry, or one that is not a multiple of 90.
    [[nodiscard]] int rotation() const;

    /// Turns the page to `degrees` clockwise, a multiple of 90 of any size and sign. What is
    /// stored is the same turn as 0, 90, 180 or 270.
    void setRotation(int degrees);

    /// Whether the page is shown lying on its side, which swaps width and height.
    [[nodiscard]] bool isTurned() const { return rotation() % 180 != 0; }

    /// The size of the crop box as shown, rotation applied.
    [[nodiscard]] QSizeF displayedSize() const;

    /// A new page of the same look that belongs to no document yet. It shares streams and fonts
    /// with this one, yet turning it leaves this one alone. Nothing if the page is damaged.
    [[nodiscard]] std::optional<PdfPage> copy() const;

    /// A document of this page alone, its media box cut to `cropBox()` and its annotations and form
    /// fields drawn into the page: the form that renderers get. Nothing if it is damaged.
    [[nodiscard]] std::optional<QByteArray> renderingBytes() const;

    /// The same for the part of the page within `part`, which lies in the media box.
    [[nodiscard]] std::optional<QByteArray> renderingBytes(const QRectF &part) const;

    /// The same for the whole page, turned to `degrees` instead of its own rotation, with the turn
    /// worked into the content.
    [[nodiscard]] std::optional<UprightPage> uprightBytes(int degrees) const;

private:
    friend class PdfDocument;
    friend class PdfPageBuilder;
    struct Data;

    PdfPage(std::shared_ptr<QPDF> file, const QPDFObjectHandle &object);

    /// This page alone in a file, cut to `part` and turned to `degrees`. Throws.
    [[nodiscard]] std::shared_ptr<QPDF> alone(const QRectF &part, int degrees) const;

    std::shared_ptr<Data> m_data;
};

/// A PDF document in memory.
///
/// Reads its file once, when it is opened: whatever happens to the file afterwards does not touch
/// the document. Moves; is not copied.
class PdfDocument {
public:
    /// A document without pages.
    PdfDocument();

    /// Opens a local file of at most 4 GiB. Damage that can be repaired is repaired in memory; an
    /// encrypted file opens when it asks for no password to read. Nothing otherwise.
    [[nodiscard]] static std::optional<PdfDocument> open(const QUrl &url);

    /// The same for a file's content; such a document has no `documentURL`.
    [[nodiscard]] static std::optional<PdfDocument> fromBytes(const QByteArray &bytes);

    [[nodiscard]] int pageCount() const;

    /// The page at a zero-based index, or nothing outside 0 to `pageCount() - 1`.
    [[nodiscard]] std::optional<PdfPage> page(int index) const;

    /// Inserts `page` so that it becomes the page at `index` (0 to `pageCount()`). A page that
    /// already stands in a document, this one or another, is copied and stays there too. Labels
    /// stay with their pages; the new one counts on from the page before. False, with nothing
    /// changed, for an index outside or a damaged page.
    [[nodiscard]] bool insertPage(const PdfPage &page, int index);

    /// Appends copies of `count` pages of another document, from the one at index `first`, with
    /// what belongs to them there: their labels and form fields. Damaged pages are left out.
    /// Answers how many pages came.
    int appendPages(const PdfDocument &source, int first, int count);

    /// Takes the page out. False for an index outside.
    [[nodiscard]] bool removePage(int index);

    /// Gives the page at `index` the content, boxes and rotation of `page`. Unlike removing and
    /// inserting, links and outline entries that lead to the page stay alive, and what the page
    /// held before is not left behind in the file. False, with nothing changed, for an index
    /// outside or a damaged page.
    [[nodiscard]] bool replacePage(int index, const PdfPage &page);

    /// States in the document's information who made it, and when it was made: now.
    void stampOrigin();

    /// Writes the whole document to an open device. False if the device takes less than all of it,
    /// or if some of the document's own data can't be read; what was written is then worthless.
    [[nodiscard]] bool write(QIODevice &device) const;

    /// The whole document as a file's content; nothing on failure.
    [[nodiscard]] std::optional<QByteArray> bytes() const;

    /// Where it was opened from; empty for a document made in memory.
    [[nodiscard]] QUrl documentURL() const { return m_url; }

private:
    explicit PdfDocument(std::shared_ptr<QPDF> file);

    std::shared_ptr<QPDF> m_file;
    QUrl m_url;
};

} // namespace velmor
