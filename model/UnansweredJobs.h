#pragma once

#include "engine/EngineCommand.h"
#include "engine/EngineEvent.h"

#include <QStringList>

namespace velmor {

/// The jobs that the engine was given and hasn't answered yet. It does them in the order of the
/// commands. An error doesn't say which one it ends, so that it counts for the first.
class UnansweredJobs {
public:
    void noteSent(const EngineCommand &command);
    void noteEvent(const EngineEvent &event);
    /// Whether there is one of this command word.
    [[nodiscard]] bool contains(const QString &word) const { return m_words.contains(word); }

private:
    QStringList m_words;
};

} // namespace velmor
