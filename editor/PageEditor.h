#pragma once

#include "editor/CropBoxes.h"
#include "editor/EditedFile.h"
#include "editor/LevelsAnalysis.h"
#include "editor/Loupe.h"
#include "editor/MagicLevels.h"
#include "editor/PagePlacement.h"
#include "model/AppModel.h"
#include "model/EditRequest.h"

#include <QCoroTask>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

namespace velmor {

/// One editing pass over one page of a saved PDF: what the editor's screen shows, and what clicks,
/// gestures and keys do in it.
///
/// Main thread. The file is read, pages are drawn, and crops and levels are worked out in the
/// background. Places are in points of the image area, origin at its top left, y downwards; corners
/// are fractions of the shown image.
///
/// A pass ends with `done`, once. Applying works on copies of what was set when it began. Who
/// leaves before it has come to its end leaves everything as it was: nothing is written, and no
/// message appears. The levels are remembered by the model all the same.
///
/// The file's state is noted before it is read. If it has been replaced, changed or removed by the
/// time the edit is to be written, nothing is written, a message says so, and the pass ends with
/// nothing changed.
class PageEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::AppModel *model READ model WRITE setModel NOTIFY modelChanged)
    Q_PROPERTY(bool isCrop READ isCrop NOTIFY opened)
    Q_PROPERTY(bool isMagic READ isMagic NOTIFY opened)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageChanged)
    Q_PROPERTY(int pageIndex READ pageIndex WRITE setPageIndex NOTIFY pageChanged)
    Q_PROPERTY(QString pageReadout READ pageReadout NOTIFY pageChanged)
    Q_PROPERTY(bool hasImage READ hasImage NOTIFY imageChanged)
    Q_PROPERTY(QString hint READ hint NOTIFY imageChanged)
    Q_PROPERTY(QSizeF viewSize READ viewSize WRITE setViewSize NOTIFY placementChanged)
    Q_PROPERTY(QRectF imageRect READ imageRect NOTIFY placementChanged)
    Q_PROPERTY(double zoom READ zoom NOTIFY placementChanged)
    Q_PROPERTY(QString zoomReadout READ zoomReadout NOTIFY placementChanged)
    Q_PROPERTY(bool isZoomedIn READ isZoomedIn NOTIFY placementChanged)
    Q_PROPERTY(QString instruction READ instruction NOTIFY instructionChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool canApply READ canApply NOTIFY canApplyChanged)
    Q_PROPERTY(bool canRemoveLast READ canRemoveLast NOTIFY boxesChanged)
    Q_PROPERTY(bool hasProposal READ hasProposal NOTIFY boxesChanged)
    Q_PROPERTY(QString currentCornerName READ currentCornerName NOTIFY boxesChanged)
    Q_PROPERTY(QString currentCornerPlace READ currentCornerPlace NOTIFY boxesChanged)
    Q_PROPERTY(double blackLum READ blackLum WRITE setBlackLum NOTIFY levelsChanged)
    Q_PROPERTY(double whiteLum READ whiteLum WRITE setWhiteLum NOTIFY levelsChanged)
    Q_PROPERTY(double gamma READ gamma NOTIFY levelsChanged)
    Q_PROPERTY(double softness READ softness WRITE setSoftness NOTIFY levelsChanged)
    Q_PROPERTY(bool magicTouched READ magicTouched NOTIFY levelsChanged)
    Q_PROPERTY(QList<double> displayHistogram READ displayHistogram NOTIFY levelsChanged)
    Q_PROPERTY(QString levelsReadout READ levelsReadout NOTIFY levelsChanged)
    Q_PROPERTY(QString gammaReadout READ gammaReadout NOTIFY levelsChanged)
    Q_PROPERTY(QString blackValue READ blackValue NOTIFY levelsChanged)
    Q_PROPERTY(QString whiteValue READ whiteValue NOTIFY levelsChanged)
    Q_PROPERTY(bool isHovered READ isHovered NOTIFY hoverChanged)
    Q_PROPERTY(QString loupeLabel READ loupeLabel NOTIFY hoverChanged)

public:
    /// Resolution at which a page without a usable raw image is drawn for applying.
    static constexpr double applyDpi = VisionOCR::applyDpi;
    /// The longest side, in pixels, of the image that is shown and measured.
    static constexpr double baseSide = 1800;
    /// The factor of one press on a zoom button.
    static constexpr double zoomStep = 1.4;

    explicit PageEditor(QObject *parent = nullptr);
    ~PageEditor() override;

    /// The settings, safe writing and messages that the pass uses; not owned.
    [[nodiscard]] AppModel *model() const { return m_model; }
    void setModel(AppModel *model);

    /// Begins the pass, the only one of this object: reads the file and loads the page that
    /// `viewport` names, or the nearest there is. A file that can't be opened leaves the editor
    /// without an image.
    void open(const QUrl &url, EditorMode mode, const EditorViewport &viewport = {});
    Q_INVOKABLE void open(const velmor::EditRequest &request)
    {
        open(request.url, request.mode, request.viewport);
    }

    [[nodiscard]] const QUrl &url() const { return m_url; }
    [[nodiscard]] EditorMode mode() const { return m_mode; }
    [[nodiscard]] bool isCrop() const { return m_mode == EditorMode::crop; }
    [[nodiscard]] bool isMagic() const { return m_mode == EditorMode::magic; }
    /// Ends the pass with nothing changed, also while an apply is under way.
    Q_INVOKABLE void cancel() { finish(false); }

    // --- The page ----------------------------------------------------------------------------

    /// 0 while the file isn't open.
    [[nodiscard]] int pageCount() const;
    [[nodiscard]] int pageIndex() const { return m_pageIndex; }
    /// Goes to another page, the nearest there is; nothing unapplied survives that. While an apply
    /// is under way the page stays blank until it is over.
    void setPageIndex(int index);
    [[nodiscard]] QString pageReadout() const;

    /// The page as it is, its longer side at most `baseSide`; null until it is loaded.
    [[nodiscard]] const QImage &baseImage() const { return m_baseImage; }
    [[nodiscard]] bool hasImage() const { return !m_baseImage.isNull(); }
    /// The page with the levels of magic mode. Made when it is asked for after a change, in a few
    /// milliseconds: ask once a frame.
    [[nodiscard]] QImage displayImage() const;
    /// The pixels of `baseImage`.
    [[nodiscard]] const std::optional<RgbaSample> &sample() const { return m_sample; }
    /// `histogram64` of the page; empty until it is loaded.
    [[nodiscard]] const QList<int> &rawHistogram() const { return m_rawHistogram; }
    /// Why there is no image and will be none, for screen readers alone; else empty.
    [[nodiscard]] const QString &hint() const { return m_hint; }

    // --- Fitting, zoom and pan ---------------------------------------------------------------

    [[nodiscard]] QSizeF viewSize() const { return m_placement.viewSize; }
    /// The size of the image area.
    void setViewSize(QSizeF size);
    [[nodiscard]] const PagePlacement &placement() const { return m_placement; }
    [[nodiscard]] QRectF imageRect() const { return m_placement.imageRect(); }
    [[nodiscard]] double zoom() const { return m_placement.zoom; }
    [[nodiscard]] QPointF pan() const { return m_placement.pan; }
    [[nodiscard]] bool isZoomedIn() const { return zoom() > PagePlacement::smallestZoom; }
    [[nodiscard]] QString zoomReadout() const;

    Q_INVOKABLE void zoomIn() { applyZoom(zoomStep, std::nullopt); }
    Q_INVOKABLE void zoomOut() { applyZoom(1 / zoomStep, std::nullopt); }
    Q_INVOKABLE void fit();
    /// Zooms about a place, or about the middle of the area.
    Q_INVOKABLE void applyZoom(double factor, QPointF at) { applyZoom(factor, std::optional(at)); }
    void applyZoom(double factor, std::optional<QPointF> at);
    Q_INVOKABLE void applyPan(QPointF delta);

    // --- Keys --------------------------------------------------------------------------------

    /// A key of the whole editor: "escape", "undo", "return" or "delete". Whether it was consumed.
    Q_INVOKABLE bool handleKey(const QString &name);

    /// A key of the image area, for when that has the focus; `modifiers` are
    /// `Qt::KeyboardModifiers`. Whether it was consumed. In crop mode Tab accepts the proposal,
    /// else goes to the next corner, and on from the last one; the arrow keys move the current
    /// corner by one point, with Shift by ten; Insert, or N, adds a box. Without a current corner,
    /// and in magic mode, the arrow keys show what lies that way on a zoomed page, by 20 points,
    /// with Shift by 100.
    Q_INVOKABLE bool handleAreaKey(int key, int modifiers);

    // --- The pointer -------------------------------------------------------------------------

    /// The pointer is down, and was pressed at `start`.
    Q_INVOKABLE void dragChanged(QPointF start, QPointF now);
    /// The pointer was released; in magic mode that is a click, however far it moved.
    Q_INVOKABLE void dragEnded(QPointF at);
    /// The gesture turned out to be another one, such as a pinch.
    Q_INVOKABLE void dragCancelled();

    [[nodiscard]] const std::optional<QPointF> &hoverPoint() const { return m_hoverPoint; }
    [[nodiscard]] bool isHovered() const { return m_hoverPoint.has_value(); }
    Q_INVOKABLE void hover(QPointF at);
    Q_INVOKABLE void hoverLeft();

    /// In magic mode, while the pointer is over the image.
    [[nodiscard]] std::optional<Loupe> loupe() const;
    /// Empty without a loupe.
    [[nodiscard]] QString loupeLabel() const;

    // --- Crop --------------------------------------------------------------------------------

    [[nodiscard]] const CropBoxes &crop() const { return m_crop; }
    [[nodiscard]] const QList<Quad> &boxes() const { return m_crop.boxes(); }
    [[nodiscard]] const QList<QPointF> &pending() const { return m_crop.pending(); }
    /// The outline of the paper on the page, once it has been found in the background; only while
    /// nothing has been clicked.
    [[nodiscard]] const std::optional<Quad> &proposal() const { return m_crop.proposal(); }
    [[nodiscard]] bool hasProposal() const { return m_crop.proposal().has_value(); }
    Q_INVOKABLE void acceptProposal();
    [[nodiscard]] bool canRemoveLast() const { return !m_crop.isEmpty(); }
    Q_INVOKABLE void removeLast();
    /// Adds a box in the middle of what is in view.
    Q_INVOKABLE void addBox();
    /// For screen readers; empty without a current corner.
    [[nodiscard]] QString currentCornerName() const;
    [[nodiscard]] QString currentCornerPlace() const;

    /// Replaces the page by one page for each box, and removes the raw pages, which don't match any
    /// more. Does nothing without boxes or while an apply is under way.
    Q_INVOKABLE void applyCrop();

    // --- Magic -------------------------------------------------------------------------------

    [[nodiscard]] const MagicLevels &levels() const { return m_levels; }
    [[nodiscard]] double blackLum() const { return m_levels.blackLum; }
    [[nodiscard]] double whiteLum() const { return m_levels.whiteLum; }
    [[nodiscard]] double gamma() const { return m_levels.gamma; }
    [[nodiscard]] double softness() const { return m_levels.softness(); }
    [[nodiscard]] int clicksSoFar() const { return m_levels.clicksSoFar; }
    [[nodiscard]] bool magicTouched() const { return m_levels.magicTouched(); }
    /// By hand, by the knobs of the range slider: it stops before the other one, and clicks don't
    /// set the points in turn any more.
    void setBlackLum(double value);
    void setWhiteLum(double value);
    void setSoftness(double softness);
    [[nodiscard]] QList<double> displayHistogram() const;
    [[nodiscard]] QString levelsReadout() const;
    [[nodiscard]] QString gammaReadout() const;
    [[nodiscard]] QString blackValue() const;
    [[nodiscard]] QString whiteValue() const;

    Q_INVOKABLE void autoSet();
    Q_INVOKABLE void resetMagic();

    /// Rebuilds the page with the levels, from its raw image if that is usable. Does nothing unless
    /// the levels are touched, or while an apply is under way.
    Q_INVOKABLE void applyMagic();

    /// What tells whether "Apply" can be pressed.
    [[nodiscard]] bool canApply() const;
    /// Whether an apply is under way.
    [[nodiscard]] bool busy() const { return m_busy; }
    /// What "Apply" does in this mode.
    Q_INVOKABLE void apply() { isCrop() ? applyCrop() : applyMagic(); }

    [[nodiscard]] QString instruction() const;

Q_SIGNALS:
    void modelChanged();
    void opened();
    void pageChanged();
    /// The image was loaded or dropped, or won't come.
    void imageChanged();
    /// `displayImage` is another one.
    void displayImageChanged();
    void placementChanged();
    void instructionChanged();
    void busyChanged();
    void canApplyChanged();
    /// Of the boxes, the unfinished one, the proposal, or the corner in hand or current.
    void boxesChanged();
    void levelsChanged();
    void hoverChanged();
    /// The pass is over: `changed` if the file was replaced. Comes once; whoever shows the editor
    /// then removes it.
    void done(bool changed);

private:
    // PageEditor.cpp
    QCoro::Task<> readFile(int wantedPage);
    void loadPage();
    QCoro::Task<> loadInBackground();
    void show(EditedPage page);
    void giveUp(const QString &hint);
    void applyPendingViewport();
    template <typename Change> void place(Change change);
    void revealCurrentCorner();
    void setLevels(const MagicLevels &levels);

    // PageEditorInput.cpp
    bool leaveStep();
    bool handleCropKey(int key, bool isShifted);
    bool panByKey(QPointF direction, bool isShifted);
    bool cycleCorners(CropBoxes::Direction direction);
    void magicClick(QPointF at);

    // PageEditorApply.cpp
    [[nodiscard]] bool begin();
    QCoro::Task<> crop(PdfPage page, QList<Quad> boxes, std::optional<QUrl> raw);
    QCoro::Task<> level(PdfPage page, MagicSettings levels, std::optional<QUrl> raw);
    template <typename Put> void conclude(Put put);
    [[nodiscard]] std::optional<QString> strangeChange() const;
    void setBusy(bool busy);
    void finish(bool changed);

    QPointer<AppModel> m_model;
    QUrl m_url;
    EditorMode m_mode = EditorMode::crop;
    std::shared_ptr<EditedFile> m_file; ///< Null until it is open.
    Wish m_wish;                        ///< Alive while this file or page is wanted.
    Wish m_applyWish;                   ///< Alive while the apply that is under way is wanted.
    int m_pageIndex = 0;
    std::optional<PdfPage> m_page; ///< What is applied to; absent until it is loaded.
    QImage m_baseImage;
    mutable QImage m_displayImage; ///< Null while it has to be made.
    std::optional<RgbaSample> m_sample;
    QList<int> m_rawHistogram;
    QString m_hint;
    std::optional<EditorViewport> m_pendingViewport;
    PagePlacement m_placement;
    std::optional<QPointF> m_hoverPoint;
    CropBoxes m_crop;
    MagicLevels m_levels;
    bool m_busy = false;
    bool m_isDone = false;
};

} // namespace velmor
