#pragma once

#include "calibration/Calibration.h"
#include "controls/PictureItem.h"

#include <QImage>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// Shows the sample of a calibration, as it is or as it becomes, as large as it fits, in the middle
/// of the item.
///
/// A page is reduced in the background, as it has many times the pixels that are shown. Until that
/// is done the picture before it stays, so that nothing flickers while one preview follows the
/// other.
class SamplePicture : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::Calibration *calibration READ calibration WRITE setCalibration NOTIFY
                   calibrationChanged)
    Q_PROPERTY(Content content MEMBER m_content NOTIFY contentChanged)

public:
    enum class Content { Original, Result };
    Q_ENUM(Content)

    explicit SamplePicture(QQuickItem *parent = nullptr);

    [[nodiscard]] Calibration *calibration() const { return m_calibration; }
    void setCalibration(Calibration *calibration);

Q_SIGNALS:
    void calibrationChanged();
    void contentChanged();

protected:
    void paint(QPainter &painter, QSizeF size) const override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    /// A picture for the item, in device pixels, of the image with this key.
    struct Reduced {
        qint64 key = 0;
        QImage image;
    };

    [[nodiscard]] static Reduced reduced(const QImage &image, QSize size);
    void follow();
    [[nodiscard]] QSize wantedSize() const;
    void refresh();
    void take(const Reduced &reduced);

    QPointer<Calibration> m_calibration;
    Content m_content = Content::Original;
    QImage m_image; ///< Null for none.
    Reduced m_shown;
    bool m_isReducing = false;
};

} // namespace velmor
