#pragma once

#include "pipeline/PageText.h"
#include "pipeline/PdfDocument.h"
#include "preview/PageSheet.h"
#include "preview/PictureRequest.h"

#include <QFuture>
#include <QHash>
#include <QImage>

#include <memory>

namespace velmor {

/// A place in the text of a document: so many characters into the text of a page.
struct TextPosition {
    int page = 0;
    int index = 0;

    auto operator<=>(const TextPosition &) const = default;
};

/// A document that is shown, and what a preview asks of it.
///
/// Answers come from a thread of their own, questions about text before pictures. One that hasn't
/// been begun when the last owner lets the document go is not begun any more, and its answer is
/// empty. A page or file that can't be read has empty answers too. Places and boxes are in points
/// from the top left of the page as shown.
class PreviewDocument : public std::enable_shared_from_this<PreviewDocument> {
public:
    /// Reads the file in the background; null if it can't be opened, or if `wish` has been let go
    /// before the work began.
    [[nodiscard]] static QFuture<std::shared_ptr<PreviewDocument>>
    open(const QUrl &url, const std::weak_ptr<const void> &wish);

    /// A document that has been read from `url`.
    PreviewDocument(PdfDocument document, QUrl url);

    [[nodiscard]] QUrl documentURL() const { return m_url; }
    [[nodiscard]] const QList<PageSheet> &pages() const { return m_pages; }

    /// Opaque, of `request.pixels`.
    [[nodiscard]] QFuture<QImage> picture(const PictureRequest &request);

    /// Lines are ended by "\r\n".
    [[nodiscard]] QFuture<PageText> text(int page);

    /// The gap between characters that is nearest to `place`; the page's start if it has no text.
    [[nodiscard]] QFuture<TextPosition> positionAt(const PagePlace &place);

    /// The boxes of each of `ranges` on a page. A length below 0 reaches to the page's end.
    [[nodiscard]] QFuture<QList<QList<QRectF>>> boxes(int page, const QList<TextRange> &ranges);

    /// The text between two places, as one pastes it: lines end with "\n" and nothing before that.
    [[nodiscard]] QFuture<QString> textBetween(const TextPosition &from, const TextPosition &to);

private:
    template <typename Work> auto ask(int priority, Work work);
    /// For the thread of the answers, as is all below.
    const PageText &knownText(int page);
    [[nodiscard]] QList<QRectF> boxesOf(int page, TextRange range);

    const QUrl m_url;
    QList<PageSheet> m_pages;
    PdfDocument m_document;
    QHash<int, PageText> m_texts;
};

} // namespace velmor
