#pragma once

#include "model/EditorViewport.h"

#include <QUrl>

namespace velmor {

/// What the browser hands to the page editor: a saved scan, what is to be done with it, and where
/// the user was looking.
struct EditRequest {
    QUrl url;
    EditorMode mode = EditorMode::crop;
    EditorViewport viewport;

    bool operator==(const EditRequest &) const = default;
};

} // namespace velmor
