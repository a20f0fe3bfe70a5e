#include "preview/PagePictures.h"

#include "preview/Background.h"

#include <algorithm>

namespace velmor {

void PagePictures::setDocument(const std::shared_ptr<PreviewDocument> &document)
{
    delete m_answers;
    m_answers = new QObject(this);
    m_document = document;
    m_pictures.clear();
    m_wanted.clear();
    m_busy = false;
}

void PagePictures::setBudget(qint64 bytes)
{
    m_pictures.setMaxCost(bytes);
}

void PagePictures::want(const QList<PictureRequest> &requests, Sharpness sharpness)
{
    m_wanted = requests;
    m_sharpness = sharpness;
    if (!m_busy)
        makeNext();
}

const PagePicture *PagePictures::picture(int page, PictureExtent extent)
{
    return m_pictures.object({page, extent});
}

bool PagePictures::isMissing(const PictureRequest &request)
{
    const PagePicture *const made = picture(request.page, request.extent);
    if (!made)
        return true;
    return m_sharpness == Sharpness::asWanted && !made->request.serves(request);
}

void PagePictures::makeNext()
{
    const auto next =
        std::ranges::find_if(m_wanted, [this](const auto &request) { return isMissing(request); });
    if (next == m_wanted.end() || !m_document)
        return;
    m_busy = true;
    const PictureRequest request = *next;
    whenAnswered(m_answers, m_document->picture(request),
                 [this, request](const QImage &image) { take(request, image); });
}

void PagePictures::take(const PictureRequest &request, const QImage &image)
{
    m_busy = false;
    // A page that can't be drawn has a picture too, so that it isn't tried for ever.
    const auto cost = std::max<qsizetype>(image.sizeInBytes(), 1);
    const bool fits =
        m_pictures.insert({request.page, request.extent}, new PagePicture{request, image}, cost);
    if (!fits)
        m_wanted.removeOne(request);
    Q_EMIT arrived(request.page);
    if (!m_busy)
        makeNext();
}

} // namespace velmor
