#include "entry/general_data_words.h"

#include "core/text.h"

namespace quench {

std::vector<std::string_view> DischargeWordScreens() {
    return {"frmEEPipeData", "frmCalculation", "frmGPD", "frmNodalEditor"};
}

DischargeVocabulary VocabularyOf(std::string_view dischargeWord) {
    if (EqualsIgnoreCase(Trim(dischargeWord), HoseDischarge)) {
        return {"Hose Model:",
                "Hose Make:",
                "Hose Size:",
                "Hose System Type:",
                "Area of Flowing Operation",
                "Max Area Per Hose",
                "Node",
                "Fixed",
                "Flow Area",
                "Total Flow Area = ",
                "Hose Flow Area",
                "Calculated Number Of Hose Outlets Per Row:",
                "Maximum Space Between Hoses",
                "Minimum Residual Pressure At HMD Hose Node",
                "Number Of Flowing Hoses:",
                "Hose Flow",
                "Fixed Flow",
                "HMD Hose Node Number:"};
    }
    return {"Sprinkler Model:",
            "Sprinkler Make:",
            "Sprinkler Size:",
            "Sprinkler System Type:",
            "Area of Sprinkler Operation",
            "Max Area Per Sprinkler",
            "Sprk",
            "NSprk",
            "Sprk Area",
            "Total Sprk Area = ",
            "Sprinkler Area",
            "Calculated Number Of Sprinklers Per Row:",
            "Maximum Space Between Sprinklers",
            "Minimum Residual Pressure At HMD Sprinkler Node",
            "Number Of Flowing Sprinklers:",
            "Sprinkler Flow",
            "Non - Sprinkler Flow",
            "HMD Sprinkler Node Number:"};
}

std::string DischargeWordFromText(std::string_view text) {
    const std::string word = Trim(text);
    for (const std::string_view known : {SprinklerDischarge, HoseDischarge}) {
        if (EqualsIgnoreCase(word, known)) {
            return std::string(known);
        }
    }
    return {};
}

} // namespace quench
