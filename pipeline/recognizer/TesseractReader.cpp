#include "pipeline/recognizer/TesseractReader.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <algorithm>
#include <string>

namespace velmor {

namespace {

using tesseract::TessBaseAPI;

/// Loaded models take about 30 MB each; documents rarely mix more than two.
constexpr size_t keptModels = 3;

const QString orientationModel = QStringLiteral("osd");

void setPage(TessBaseAPI &api, const GreyPixels &page, int dpi)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(page.bytes.constData());
    api.SetImage(bytes, page.size.width(), page.size.height(), 1, page.size.width());
    api.SetSourceResolution(dpi);
}

std::optional<RecognizedWord> wordAt(const tesseract::ResultIterator &place)
{
    const std::unique_ptr<char[]> text(place.GetUTF8Text(tesseract::RIL_WORD));
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    if (!text || !place.BoundingBox(tesseract::RIL_WORD, &left, &top, &right, &bottom))
        return std::nullopt;
    RecognizedWord word;
    word.text = QString::fromUtf8(text.get()).simplified();
    word.box = QRect(left, top, right - left, bottom - top);
    const auto confidence = static_cast<double>(place.Confidence(tesseract::RIL_WORD));
    word.confidence = std::clamp(confidence, 0.0, 100.0);
    if (word.text.isEmpty() || !word.box.isValid())
        return std::nullopt;
    return word;
}

TextAnswer collectLines(TessBaseAPI &api)
{
    TextAnswer answer;
    const std::unique_ptr<tesseract::ResultIterator> place(api.GetIterator());
    if (!place)
        return answer;
    RecognizedWords line;
    do {
        if (place->IsAtBeginningOf(tesseract::RIL_TEXTLINE) && !line.empty())
            answer.lines.push_back(std::exchange(line, {}));
        if (auto word = wordAt(*place))
            line.push_back(std::move(*word));
    } while (place->Next(tesseract::RIL_WORD));
    if (!line.empty())
        answer.lines.push_back(std::move(line));
    return answer;
}

} // namespace

TesseractReader::TesseractReader() = default;
TesseractReader::~TesseractReader() = default;

QStringList TesseractReader::languages()
{
    // The library finds its folder only in Init(), which it does even for a model that doesn't
    // exist; a real one would take its time to load.
    TessBaseAPI api;
    (void)api.Init(nullptr, "none", tesseract::OEM_LSTM_ONLY);
    std::vector<std::string> names;
    api.GetAvailableLanguagesAsVector(&names);
    QStringList languages;
    for (const std::string &name : names)
        languages.append(QString::fromStdString(name));
    languages.sort();
    return languages;
}

TessBaseAPI *TesseractReader::model(const QString &name)
{
    const auto loaded = std::ranges::find(m_models, name, &Model::name);
    if (loaded != m_models.end()) {
        m_models.splice(m_models.begin(), m_models, loaded);
        return m_models.front().api.get();
    }
    auto api = std::make_unique<TessBaseAPI>();
    const bool forText = name != orientationModel;
    const auto mode = forText ? tesseract::OEM_LSTM_ONLY : tesseract::OEM_TESSERACT_ONLY;
    if (api->Init(nullptr, name.toUtf8().constData(), mode) != 0)
        return nullptr;
    // Pages come dark on light: reading each poor line again inverted would only cost time.
    api->SetVariable("tessedit_do_invert", "0");
    api->SetPageSegMode(forText ? tesseract::PSM_AUTO : tesseract::PSM_OSD_ONLY);
    m_models.push_front({name, std::move(api)});
    if (m_models.size() > keptModels)
        m_models.pop_back();
    return m_models.front().api.get();
}

std::optional<TextAnswer> TesseractReader::text(const TextRequest &request)
{
    TessBaseAPI *api = model(request.language);
    if (!api)
        return std::nullopt;
    setPage(*api, request.page, request.dpi);
    std::optional<TextAnswer> answer;
    if (api->Recognize(nullptr) == 0)
        answer = collectLines(*api);
    api->Clear();
    return answer;
}

std::optional<OrientationAnswer> TesseractReader::orientation(const OrientationRequest &request)
{
    TessBaseAPI *api = model(orientationModel);
    if (!api)
        return std::nullopt;
    setPage(*api, request.page, request.dpi);
    int degrees = 0;
    float confidence = 0;
    const char *script = nullptr; // the library's
    float scriptConfidence = 0;
    OrientationAnswer answer;
    if (api->DetectOrientationScript(&degrees, &confidence, &script, &scriptConfidence)) {
        answer.degrees = degrees;
        answer.confidence = std::max(0.0, static_cast<double>(confidence));
        answer.script = QString::fromUtf8(script);
        answer.scriptConfidence = std::max(0.0, static_cast<double>(scriptConfidence));
    }
    api->Clear();
    return answer;
}

} // namespace velmor
