#pragma once

#include "pipeline/recognizer/RecognizerMessages.h"

#include <list>
#include <memory>
#include <optional>

namespace tesseract {
class TessBaseAPI;
}

namespace velmor {

/// Reads pages with Tesseract and keeps the models that it has loaded.
///
/// Single-threaded. Tesseract may crash or hang on a page: it runs in a process that can be thrown
/// away.
class TesseractReader {
public:
    TesseractReader();
    ~TesseractReader();

    /// The installed models, sorted; empty when there are none.
    [[nodiscard]] QStringList languages();

    /// The lines of a page, in reading order. Nothing when the language's model can't be loaded.
    [[nodiscard]] std::optional<TextAnswer> text(const TextRequest &request);

    /// How the page lies. Nothing when the model for it is not installed.
    [[nodiscard]] std::optional<OrientationAnswer> orientation(const OrientationRequest &request);

private:
    struct Model {
        QString name;
        std::unique_ptr<tesseract::TessBaseAPI> api;
    };

    /// The model of that name, loaded if need be; owned by this. Null when it can't be loaded.
    tesseract::TessBaseAPI *model(const QString &name);

    std::list<Model> m_models; ///< The one used last first.
};

} // namespace velmor
