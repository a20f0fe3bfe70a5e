#include "model/AppModel.h"

namespace velmor {

void AppModel::selectPreset(DocumentType type)
{
    assign(m_selectedPreset, type, &AppModel::selectedPresetChanged);
    ScanSettings settings = m_settings;
    applyDefaults(type, settings);
    setSettings(settings);
}

} // namespace velmor
