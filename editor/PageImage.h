#pragma once

#include "editor/PageEditor.h"

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// Shows the page of an editor where that says, with the levels of the moment.
///
/// Where the page is shown smaller than its image is, the image is reduced to the window's very
/// pixels by averaging, so that print stays legible; where it is larger, the renderer interpolates.
/// It looks the same on every renderer. The image area clips what reaches beyond it.
class PageImage : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::PageEditor *editor READ editor WRITE setEditor NOTIFY editorChanged REQUIRED)

public:
    explicit PageImage(QQuickItem *parent = nullptr);

    [[nodiscard]] PageEditor *editor() const { return m_editor; }
    void setEditor(PageEditor *editor);

Q_SIGNALS:
    void editorChanged();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    QPointer<PageEditor> m_editor;
    QImage m_image;         ///< The one to show; null for none.
    QSize m_textureSize;    ///< Pixels of the texture that the node has.
    qint64 m_textureOf = 0; ///< The key of the image that it was made of.
};

} // namespace velmor
