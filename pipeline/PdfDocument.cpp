#include "pipeline/PdfDocument.h"

#include "pipeline/PageLabels.h"
#include "pipeline/PdfPageData.h"

#include <QBuffer>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <qpdf/Buffer.hh>
#include <qpdf/BufferInputSource.hh>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDFAcroFormDocumentHelper.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>
#include <qpdf/QUtil.hh>

#include <algorithm>
#include <new>
#include <stdexcept>

namespace velmor {

namespace {

/// A file's content as QPDF reads it. Owns the bytes, because pages that were copied into another
/// document go on reading from here after their own document has gone.
class OwnedBytes : public BufferInputSource {
public:
    explicit OwnedBytes(const QByteArray &bytes)
        : BufferInputSource("document", wrapped(bytes), true), m_bytes(bytes)
    {
    }

private:
    /// QPDF's buffers are not const, but an input source never writes to its own.
    static Buffer *wrapped(const QByteArray &bytes)
    {
        auto *data = reinterpret_cast<unsigned char *>(const_cast<char *>(bytes.constData()));
        return new Buffer(data, static_cast<size_t>(bytes.size()));
    }

    QByteArray m_bytes;
};

/// Hands what QPDF writes to a device, and throws at the first byte that the device refuses.
class DevicePipeline : public Pipeline {
public:
    explicit DevicePipeline(QIODevice &device) : Pipeline("device", nullptr), m_device(device) {}

    void write(const unsigned char *data, size_t length) override
    {
        const auto size = static_cast<qint64>(length);
        if (m_device.write(reinterpret_cast<const char *>(data), size) != size)
            throw std::runtime_error("the device is full or gone");
    }

    void finish() override {}

private:
    QIODevice &m_device;
};

std::shared_ptr<QPDF> newFile()
{
    std::shared_ptr<QPDF> file = QPDF::create();
    file->setSuppressWarnings(true);
    return file;
}

/// Writes all of `file` to `device`; false when either fails. Source data that can't be read is a
/// mere warning to QPDF, but a lost page to us.
bool writeTo(QPDF &file, QIODevice &device)
{
    try {
        // Damage that can be repaired is repaired, with a warning, when an object is read first.
        static_cast<void>(file.getAllObjects());
        const size_t warnings = file.numWarnings();
        DevicePipeline pipeline(device);
        QPDFWriter writer(file);
        writer.setOutputPipeline(&pipeline);
        writer.setStreamDataMode(qpdf_s_preserve);
        writer.setMinimumPDFVersion("1.5");
        writer.write();
        return file.numWarnings() == warnings;
    } catch (const std::exception &) {
        return false;
    }
}

std::optional<QByteArray> bytesOf(QPDF &file)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!writeTo(file, buffer))
        return std::nullopt;
    return buffer.data();
}

/// The rectangle of a box entry, corners in any order; nothing if it isn't one or is empty.
std::optional<QRectF> rectangle(QPDFObjectHandle object)
{
    if (!object.isRectangle())
        return std::nullopt;
    const QPDFObjectHandle::Rectangle box = object.getArrayAsRectangle();
    const QRectF rect(QPointF(box.llx, box.lly), QPointF(box.urx, box.ury));
    if (!(rect.width() > 0) || !(rect.height() > 0))
        return std::nullopt;
    return rect;
}

/// A page's own or inherited entry. Page trees that loop end the search instead of hanging it.
QPDFObjectHandle attribute(const QPDFObjectHandle &page, const char *key)
{
    return QPDFPageObjectHelper(page).getAttribute(key, false);
}

QPDFObjectHandle newRectangle(const QRectF &rect)
{
    return QPDFObjectHandle::newArray(
        QPDFObjectHandle::Rectangle(rect.left(), rect.top(), rect.right(), rect.bottom()));
}

/// `page` as an object that `file` may take in: a fresh one in any case.
QPDFObjectHandle objectFor(QPDF &file, const std::shared_ptr<QPDF> &owner,
                           const QPDFObjectHandle &page)
{
    owner->pushInheritedAttributesToPage();
    const QPDFObjectHandle copy = owner->makeIndirectObject(QPDFObjectHandle(page).shallowCopy());
    return owner.get() == &file ? copy : file.copyForeignObject(copy);
}

/// The content of a regular file; nothing if it can't be read or is larger than any scan. A pipe or
/// a device would block or never end.
std::optional<QByteArray> fileContent(const QString &path)
{
    constexpr qint64 largestFile = qint64{4} << 30;
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    try {
        const QByteArray bytes = file.readAll();
        return file.error() == QFileDevice::NoError ? std::optional(bytes) : std::nullopt;
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

} // namespace

std::shared_ptr<QPDF> emptyFile()
{
    std::shared_ptr<QPDF> file = newFile();
    file->emptyPDF();
    return file;
}

PdfPage::PdfPage(std::shared_ptr<QPDF> file, const QPDFObjectHandle &object)
    : m_data(std::make_shared<Data>(Data{std::move(file), object}))
{
}

QRectF PdfPage::mediaBox() const
{
    constexpr QRectF usLetter(0, 0, 612, 792);
    try {
        return rectangle(attribute(m_data->object, "/MediaBox")).value_or(usLetter);
    } catch (const std::exception &) {
        return usLetter;
    }
}

QRectF PdfPage::cropBox() const
{
    const QRectF media = mediaBox();
    try {
        const auto crop = rectangle(attribute(m_data->object, "/CropBox"));
        const QRectF visible = crop ? crop->intersected(media) : media;
        return visible.isEmpty() ? media : visible;
    } catch (const std::exception &) {
        return media;
    }
}

int PdfPage::rotation() const
{
    try {
        QPDFObjectHandle entry = attribute(m_data->object, "/Rotate");
        int degrees = 0;
        if (!entry.getValueAsInt(degrees) || degrees % 90 != 0)
            return 0;
        return degrees;
    } catch (const std::exception &) {
        return 0;
    }
}

void PdfPage::setRotation(int degrees)
{
    Q_ASSERT(degrees % 90 == 0);
    const int turn = (degrees % 360 + 360) % 360;
    m_data->object.replaceKey("/Rotate", QPDFObjectHandle::newInteger(turn));
}

QSizeF PdfPage::displayedSize() const
{
    const QSizeF size = cropBox().size();
    return isTurned() ? size.transposed() : size;
}

std::optional<PdfPage> PdfPage::copy() const
{
    try {
        return PdfPage(m_data->file, objectFor(*m_data->file, m_data->file, m_data->object));
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

std::shared_ptr<QPDF> PdfPage::alone(const QRectF &part, int degrees) const
{
    const std::shared_ptr<QPDF> file = emptyFile();
    QPDFObjectHandle object = objectFor(*file, m_data->file, m_data->object);
    object.replaceKey("/MediaBox", newRectangle(part));
    object.removeKey("/CropBox");
    object.replaceKey("/Rotate", QPDFObjectHandle::newInteger(degrees));
    file->addPage(object, false);
    QPDFPageDocumentHelper(*file).flattenAnnotations(0, an_invisible | an_hidden);
    return file;
}

std::optional<QByteArray> PdfPage::renderingBytes() const
{
    return renderingBytes(cropBox());
}

std::optional<QByteArray> PdfPage::renderingBytes(const QRectF &part) const
{
    try {
        return bytesOf(*alone(part, rotation()));
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

std::optional<UprightPage> PdfPage::uprightBytes(int degrees) const
{
    try {
        const std::shared_ptr<QPDF> file = alone(cropBox(), degrees);
        QPDFPageObjectHelper upright(file->getAllPages().front());
        upright.flattenRotation();
        const QRectF box = rectangle(upright.getAttribute("/MediaBox", false)).value_or(cropBox());
        const auto pdf = bytesOf(*file);
        if (!pdf)
            return std::nullopt;
        return UprightPage{
            *pdf, {box.left(), box.bottom()}
        };
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

PdfDocument::PdfDocument() : PdfDocument(emptyFile()) {}

PdfDocument::PdfDocument(std::shared_ptr<QPDF> file) : m_file(std::move(file)) {}

std::optional<PdfDocument> PdfDocument::open(const QUrl &url)
{
    const std::optional<QByteArray> bytes = fileContent(url.toLocalFile());
    auto document = bytes ? fromBytes(*bytes) : std::nullopt;
    if (document)
        document->m_url = url;
    return document;
}

std::optional<PdfDocument> PdfDocument::fromBytes(const QByteArray &bytes)
{
    try {
        const std::shared_ptr<QPDF> file = newFile();
        file->processInputSource(std::make_shared<OwnedBytes>(bytes));
        static_cast<void>(file->getAllPages()); // throws when the page tree is beyond repair
        // The entry may have been lost with the damage, and QPDF writes it only where it was.
        if (!file->getTrailer().hasKey("/Size"))
            file->getTrailer().replaceKey("/Size", QPDFObjectHandle::newInteger(0));
        return PdfDocument(file);
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

int PdfDocument::pageCount() const
{
    return static_cast<int>(m_file->getAllPages().size());
}

std::optional<PdfPage> PdfDocument::page(int index) const
{
    if (index < 0 || index >= pageCount())
        return std::nullopt;
    return PdfPage(m_file, m_file->getAllPages()[static_cast<size_t>(index)]);
}

bool PdfDocument::insertPage(const PdfPage &page, int index)
{
    const int count = pageCount();
    if (index < 0 || index > count)
        return false;
    try {
        const QPDFObjectHandle object = objectFor(*m_file, page.m_data->file, page.m_data->object);
        if (index == count)
            m_file->addPage(object, false);
        else
            m_file->addPageAt(object, true, m_file->getAllPages()[static_cast<size_t>(index)]);
        makeRoomForLabel(*m_file, index);
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

int PdfDocument::appendPages(const PdfDocument &source, int first, int count)
{
    const int before = pageCount();
    const int end = std::min(first + count, source.pageCount());
    QList<int> copied;
    try {
        QPDFAcroFormDocumentHelper fields(*m_file);
        QPDFAcroFormDocumentHelper sourceFields(*source.m_file);
        for (int index = std::max(first, 0); index < end; ++index) {
            const std::optional<PdfPage> page = source.page(index);
            if (!page || !insertPage(*page, pageCount()))
                continue;
            copied.append(index);
            fields.fixCopiedAnnotations(m_file->getAllPages().back(), page->m_data->object,
                                        sourceFields);
        }
        appendLabels(*m_file, before, *source.m_file, copied);
    } catch (const std::exception &) {
        // The pages are there all the same; they may lack a label or a field.
    }
    return pageCount() - before;
}

bool PdfDocument::removePage(int index)
{
    if (index < 0 || index >= pageCount())
        return false;
    try {
        m_file->removePage(m_file->getAllPages()[static_cast<size_t>(index)]);
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

bool PdfDocument::replacePage(int index, const PdfPage &page)
{
    if (index < 0 || index >= pageCount())
        return false;
    try {
        QPDFObjectHandle source = objectFor(*m_file, page.m_data->file, page.m_data->object);
        QPDFObjectHandle target = m_file->getAllPages()[static_cast<size_t>(index)];
        for (const std::string &key : target.getKeys()) {
            if (key != "/Parent")
                target.removeKey(key);
        }
        for (const std::string &key : source.getKeys()) {
            if (key != "/Parent")
                target.replaceKey(key, source.getKey(key));
        }
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

void PdfDocument::stampOrigin()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QDate day = now.date();
    const QTime time = now.time();
    // QPDF counts the offset west of UTC, in minutes.
    const QUtil::QPDFTime moment(day.year(), day.month(), day.day(), time.hour(), time.minute(),
                                 time.second(), -now.offsetFromUtc() / 60);
    QPDFObjectHandle information = QPDFObjectHandle::newDictionary();
    information.replaceKey("/Producer", QPDFObjectHandle::newUnicodeString("Velmor"));
    information.replaceKey("/CreationDate",
                           QPDFObjectHandle::newString(QUtil::qpdf_time_to_pdf_time(moment)));
    m_file->getTrailer().replaceKey("/Info", m_file->makeIndirectObject(information));
}

bool PdfDocument::write(QIODevice &device) const
{
    return writeTo(*m_file, device);
}

std::optional<QByteArray> PdfDocument::bytes() const
{
    return bytesOf(*m_file);
}

} // namespace velmor
