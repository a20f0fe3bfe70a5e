#include "bench/GeometryQuality.h"

#include "bench/corpus/SceneSeries.h"
#include "scanengine/imaging/PageOutline.h"
#include "scanengine/imaging/Skew.h"
#include "scanengine/imaging/Straighten.h"

#include <QDir>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <optional>
#include <vector>

namespace bench {
namespace {

using scanengine::PageOutline;

constexpr int sceneDpi = 150;
constexpr double pixelsPerMm = sceneDpi / 25.4;
/// Ink this far outside of the crop counts as cut, in millimetres: the edge of the paper itself is
/// not told apart better.
constexpr double cutTolerance = 0.5;

double distance(QPointF a, QPointF b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/// The largest distance of a corner from its truth, in millimetres, as far as the bed shows it.
double cornerError(const PageOutline &outline, const QPolygonF &paper, QSize bed)
{
    const QPolygonF found = outline.corners();
    const QRectF frame = QRectF({0, 0}, QSizeF(bed)).adjusted(-1, -1, 1, 1);
    double most = 0;
    for (int i = 0; i < 4; ++i) {
        if (frame.contains(paper[i]))
            most = std::max(most, distance(found[i], paper[i]) / pixelsPerMm);
    }
    return most;
}

/// How far content lies outside of `outline`, in millimetres.
double contentCut(const PageOutline &outline, const corpus::BedScene &scene)
{
    return scene.contentBeyond(outline.center, outline.size, outline.angle) / pixelsPerMm;
}

struct Figures {
    int scenes = 0;
    int kept = 0; ///< The whole bed, because unsure.
    int cut = 0;
    std::vector<double> corners;
    std::vector<double> angles;     ///< Errors by all evidence.
    std::vector<double> textAngles; ///< Errors by text lines alone.
    int lined = 0;                  ///< Scenes with lines.
    int falseSkews = 0;             ///< Angles where nothing tells one.
};

double at(std::vector<double> values, double share)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, size_t(share * double(values.size())))];
}

double mean(const std::vector<double> &values)
{
    double sum = 0;
    for (const double value : values)
        sum += value;
    return values.empty() ? 0 : sum / double(values.size());
}

/// A turn by more than a degree where neither lines nor edges ask for it.
bool isFalse(std::optional<double> angle, const corpus::SceneCase &made, bool isSingle)
{
    return angle && isSingle && !made.hasLines && std::abs(*angle - made.scene.angle) > 1;
}

void savePicture(const QString &folder, quint32 seed, const corpus::SceneCase &made,
                 const std::optional<PageOutline> &outline)
{
    QImage picture = made.scene.image;
    QPainter painter(&picture);
    painter.setPen(QPen(Qt::green, 2));
    for (const QPolygonF &paper : made.scene.papers)
        painter.drawPolygon(paper);
    painter.setPen(QPen(Qt::red, 2));
    if (outline)
        painter.drawPolygon(outline->corners());
    painter.end();
    picture.save(QDir(folder).filePath(QStringLiteral("%1 %2.png").arg(seed).arg(made.name)));
}

double shareWithin(const std::vector<double> &errors, double limit)
{
    const auto count =
        std::count_if(errors.begin(), errors.end(), [&](double error) { return error <= limit; });
    return errors.empty() ? 100 : 100 * double(count) / double(errors.size());
}

void printLine(const char *name, const Figures &figures)
{
    std::printf("%-14s %6d %5d %4d  %5.2f %5.2f %5.2f  %6.3f %6.3f %6.3f %5.1f%%  %6.3f %6.3f "
                "%5.1f%% %4d/%d  %5d\n",
                name, figures.scenes, figures.kept, figures.cut, mean(figures.corners),
                at(figures.corners, 0.95), at(figures.corners, 1), mean(figures.angles),
                at(figures.angles, 0.95), at(figures.angles, 1), shareWithin(figures.angles, 0.1),
                mean(figures.textAngles), at(figures.textAngles, 0.95),
                shareWithin(figures.textAngles, 0.1), int(figures.textAngles.size()), figures.lined,
                figures.falseSkews);
}

/// Lays page and bed `i` of a series and adds to each group of `groups` it belongs to.
void addScene(std::map<QString, Figures> &groups, quint32 seed, int i, const QString &pictures)
{
    static constexpr std::array names{"page", "small",   "at the edge",   "photo",
                                      "hard", "several", "fills the bed", "no lines"};
    static constexpr std::array lids{"black", "grey", "white"};
    const corpus::SceneCase made = corpus::sceneCase(seed, i, sceneDpi);
    const std::optional<PageOutline> outline = scanengine::findPage(made.scene.image);
    const double cut = outline ? contentCut(*outline, made.scene) : 0;
    const bool isSingle = made.scene.papers.size() == 1;
    const double corner = outline && isSingle
                              ? cornerError(*outline, made.scene.papers[0], made.scene.image.size())
                              : 0;
    const auto skew =
        scanengine::textSkew(made.scene.image, outline ? outline->corners() : QPolygonF());
    const auto angle = scanengine::pageSkew(made.scene.image, outline);
    for (const QString &name : {QString::fromLatin1(names[size_t(made.kind)]),
                                QString::fromLatin1(lids[size_t(made.lid)]),
                                QStringLiteral("~ seed %1").arg(seed), QStringLiteral("~~ all")}) {
        Figures &figures = groups[name];
        ++figures.scenes;
        figures.kept += outline ? 0 : 1;
        figures.cut += cut > cutTolerance ? 1 : 0;
        if (outline && isSingle)
            figures.corners.push_back(corner);
        figures.lined += made.hasLines ? 1 : 0;
        figures.falseSkews += isFalse(angle, made, isSingle) ? 1 : 0;
        if (made.hasLines && skew)
            figures.textAngles.push_back(std::abs(skew->angle - made.scene.angle));
        if (angle && isSingle && !isFalse(angle, made, isSingle))
            figures.angles.push_back(std::abs(*angle - made.scene.angle));
    }
    if (!pictures.isEmpty() &&
        (cut > cutTolerance || corner > 1.5 || (!outline && made.kind != corpus::SceneKind::full)))
        savePicture(pictures, seed, made, outline);
}

} // namespace

void printGeometryQuality(const QList<quint32> &seeds, int count, const QString &pictures)
{
    if (!pictures.isEmpty())
        QDir().mkpath(pictures);
    std::map<QString, Figures> groups;
    for (const quint32 seed : seeds) {
        for (int i = 0; i < count; ++i)
            addScene(groups, seed, i, pictures);
    }
    std::printf("%d scenes of each seed. Corners in mm, mean, 95 %% and most; angles in degrees, "
                "mean, 95 %%, most\nand share within 0.1: by all evidence, and by text lines alone "
                "where there are some.\n\n",
                count);
    std::printf("%-14s %6s %5s %4s  %17s  %27s  %27s  %5s\n", "", "scenes", "whole", "cut",
                "corners", "angles", "text lines alone", "false");
    for (const auto &[name, figures] : groups)
        printLine(qPrintable(name), figures);
    std::fflush(stdout);
}

} // namespace bench
