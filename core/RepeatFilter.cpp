#include "core/RepeatFilter.h"

// The anchors first, as they are quick on the files hosts write; the suffix
// array when they give up, on lines built to share their pieces.
std::vector<bool> RepeatFilter::keep(const QStringList &lines)
{
    if (std::optional<std::vector<bool>> kept = keepByAnchors(lines))
        return std::move(*kept);
    return keepBySuffixArray(lines);
}
