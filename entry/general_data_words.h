#pragma once

// The vocabulary that the primary discharge word switches. A project whose discharge is "Hose"
// shows every caption that names a sprinkler with the hose's words; the screens take their
// captions from here, and a change of the word is sent to every open screen, which shows its
// captions again.

#include <string>
#include <string_view>
#include <vector>

namespace quench {

constexpr std::string_view SprinklerDischarge = "Sprinkler";
constexpr std::string_view HoseDischarge = "Hose";

// The word every open screen is sent when the discharge word or the units change: it shows its
// captions again from the model.
constexpr std::string_view UpdateLabelsWord = "Updatlabel";

// The screens whose captions follow the discharge word.
std::vector<std::string_view> DischargeWordScreens();

struct DischargeVocabulary {
    // frmGPD
    std::string SprinklerModel, SprinklerMake, SprinklerSize, SprinklerSystemType,
        AreaOfSprinklerOperation, MaxAreaPerSprinkler;
    // frmEEPipeData: the column headings "Sprk" (node data), "NSprk" (fixed flow), the area
    // heading, the area total and the builders' captions.
    std::string NodeHeading, FixedFlowHeading, AreaHeading, TotalArea;
    std::string BuilderArea, BuilderCount, BuilderSpacing;
    // frmCalculation
    std::string MinPressureAtHMD, NumberOfFlowing, Flow, NonFlow, HMDNodeNumber;
};

// The captions of a discharge word: "Hose" gives the hose's, anything else the sprinkler's.
DischargeVocabulary VocabularyOf(std::string_view dischargeWord);

// The word itself when it is one of the two (any case, blanks around), else nothing.
std::string DischargeWordFromText(std::string_view text);

} // namespace quench
