// The fixed texts of the interface, in Russian.
#pragma once

#include <QString>

namespace wb
{

enum UiTextIndex : int {
    TextObjects, // count label of the folder list
    TextSize,    // file size label
    TextMemory,
    TextFreeMemory, // memory gauge tip
    TextAllFiles,   // dialog filter names
    TextJpgFiles,
    TextPngFiles,
    TextPngAndGiFiles,
    TextGiFiles,
    TextGaiFiles,
    TextHaiFiles,
    TextPkgArchives,
    TextDatFiles,
    TextBytes, // units
    TextKilobytes,
    TextMegabytes,
    TextType, // viewer status line
    TextFrameType,
    TextFrequency,
    TextFrame,     // viewer frame label
    TextSavingPng, // progress of saving all frames
    TextReadingFrames,
    TextUnpackerBusy,
    TextCreatingGi,
    TextFrames,
    TextAddingFrames,
    TextCreatingGiFrames,
    TextGaiHasErrors, // question
    TextErrors,       // box title
    TextSomeNotAdded,
    TextInformation, // box title
    TextGaiStartX,   // errors of a GAI project
    TextGaiStartY,
    TextGaiWider,
    TextGaiTaller,
    TextGaiOutHorizontally,
    TextGaiOutVertically,
    TextGaiType4Width,
    TextGaiType4Height,
    TextFramePrefix, // before the number in the GAI error list
    TextErrorCount
};

inline constexpr int UiTextCount = TextErrorCount + 1;

// The text of an index 0..40; any other index is the caller's fault and throws std::out_of_range.
const QString &UiText(int index);

} // namespace wb
