// quench library: the pipe materials library from the command line.
//   quench library [--json] [--library FILE]      the defined materials
//   quench library N [--json] [--library FILE]    material N with its sizes and fitting lengths

#include "cli/command.h"
#include "cli/library_arguments.h"
#include "core/formats.h"
#include "core/json_writer.h"
#include "core/text.h"
#include "entry/fitting_entry.h"
#include "library/fitting_text.h"
#include "library/material_tables.h"

#include <ostream>
#include <string>

namespace quench::cli {

namespace {

constexpr const char* Usage = "usage: quench library [N] [--json] [--library FILE]";

std::string RightAligned(std::string text, std::size_t width) {
    if (text.size() < width) {
        text.insert(0, width - text.size(), ' ');
    }
    return text;
}

int SizeCount(const PipeMaterialRecord& material) {
    int count = 0;
    for (const auto& size : material.Diameters) {
        count += size.Nominal != 0 ? 1 : 0;
    }
    return count;
}

void ListMaterialsText(const PipeLibrary& library, std::ostream& out) {
    out << "  No.  Material                          C  Sizes\n";
    for (int number = 1; number <= LibraryMaterials; ++number) {
        const auto& material = library.Material(number);
        if (material.IsDefined()) {
            out << RightAligned(std::to_string(number), 5) << "  "
                << PrintableName(FixedWidth(material.Description, DescriptionLength))
                << RightAligned(std::to_string(material.CValue), 5)
                << RightAligned(std::to_string(SizeCount(material)), 7) << '\n';
        }
    }
}

void WriteMaterialHeading(JsonWriter& json, const PipeMaterialRecord& material, int number) {
    json.Key("number");
    json.Number(number);
    json.Key("name");
    json.String(Latin1ToUtf8(material.Description));
    json.Key("c_value");
    json.Number(material.CValue);
}

void ListMaterialsJson(const PipeLibrary& library, std::ostream& out) {
    JsonWriter json(out);
    json.BeginObject();
    json.Key("file");
    json.String(library.File.string());
    json.Key("materials");
    json.BeginArray();
    for (int number = 1; number <= LibraryMaterials; ++number) {
        const auto& material = library.Material(number);
        if (material.IsDefined()) {
            json.BeginObject();
            WriteMaterialHeading(json, material, number);
            json.Key("sizes");
            json.Number(SizeCount(material));
            json.EndObject();
        }
    }
    json.EndArray();
    json.EndObject();
}

// A length of the library: "-" where there is none.
std::string LengthCell(Single length) {
    return RightAligned(length == 0 ? "-" : Format(length, "##0.00"), 7);
}

void ShowMaterialText(const PipeMaterialRecord& material, int number, std::ostream& out) {
    out << "Material " << number << ": " << PrintableName(material.Description) << ", C "
        << material.CValue << ", " << SizeCount(material) << " sizes\n"
        << "Nominal    Inner    Outer    45E    90E    LTE    T&C      B      G    CHV  "
           "Autosizing\n";
    for (const auto& size : material.Diameters) {
        if (size.Nominal == 0) {
            continue;
        }
        out << RightAligned(Format(size.Nominal, "##0.000"), 7)
            << RightAligned(Format(size.Inner, "##0.000"), 9)
            << RightAligned(Format(size.Outer, "##0.000"), 9);
        for (const Single length : size.FitEqLen) {
            out << LengthCell(length);
        }
        out << "  " << (IsUsableDiameter(size) ? "yes" : "no") << '\n';
    }
    out << "Nominal, inner and outer diameters in inches; fitting lengths in feet.\n";
}

void ShowMaterialJson(const PipeMaterialRecord& material, int number, std::ostream& out) {
    JsonWriter json(out);
    json.BeginObject();
    WriteMaterialHeading(json, material, number);
    json.Key("sizes");
    json.BeginArray();
    for (const auto& size : material.Diameters) {
        if (size.Nominal == 0) {
            continue;
        }
        json.BeginObject();
        for (const auto& [name, value] : {std::pair{"nominal_in", size.Nominal},
                                          {"inner_in", size.Inner},
                                          {"outer_in", size.Outer},
                                          {"weight_lb_per_ft", size.Weight}}) {
            json.Key(name);
            json.Number(value);
        }
        json.Key("fitting_lengths_ft");
        json.BeginObject();
        for (int kind = 0; kind < LibraryFittingKinds; ++kind) {
            json.Key(std::string(1, FittingLetters[kind]));
            json.Number(size.FitEqLen[kind]);
        }
        json.EndObject();
        json.Key("autosizing");
        json.Boolean(IsUsableDiameter(size));
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
}

// Material N of the library: 1 to 50 and defined.
int ShowMaterial(const PipeLibrary& library, const LibraryArguments& arguments, std::ostream& out,
                 std::ostream& err) {
    const std::string& text = arguments.Words.front();
    const int number = LibraryMaterialOfText(text);
    if (number == 0) {
        return UsageError(err, "no material \"" + text + "\": materials are 1 to 50");
    }
    const auto& material = library.Material(number);
    if (!material.IsDefined()) {
        return UsageError(err, "material " + std::to_string(number) +
                                   " is not defined in the library \"" + library.File.string() +
                                   "\"");
    }
    if (arguments.Json) {
        ShowMaterialJson(material, number, out);
    } else {
        ShowMaterialText(material, number, out);
    }
    return ExitSuccess;
}

int RunLibrary(const Arguments& arguments, std::ostream& out, std::ostream& err) {
    const auto split = SplitLibraryArguments(arguments, err);
    if (!split) {
        return ExitUsage;
    }
    if (split->Words.size() > 1) {
        return UsageError(err, Usage);
    }
    const auto library = LoadCommandLibrary(*split, err);
    if (!library) {
        return ExitUsage;
    }
    if (!split->Words.empty()) {
        return ShowMaterial(*library, *split, out, err);
    }
    if (split->Json) {
        ListMaterialsJson(*library, out);
    } else {
        ListMaterialsText(*library, out);
    }
    return ExitSuccess;
}

const CommandRegistration registration(
    "library", "[N] [--json] [--library FILE]",
    "List the materials of the pipe library, or material N with its sizes and fitting lengths.",
    RunLibrary);

} // namespace

} // namespace quench::cli
