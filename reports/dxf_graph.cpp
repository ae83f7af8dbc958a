#include "reports/dxf_graph.h"

#include "core/atomic_write.h"
#include "core/formats.h"
#include "core/text.h"

#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <string_view>

namespace quench {

namespace {

// The chart frame of the drawing, in plotting units.
constexpr float ChartWidth = 580;
constexpr float ChartHeight = 144;
constexpr float LeftOffset = 34;
constexpr int Ticks = 20;
constexpr double Power = 1.85;
constexpr const char* ExtentWidth = "500";
constexpr std::size_t CellWidth = 29;

// A coordinate as the drawing holds it: the Single's Str without its leading blank.
std::string Coordinate(float value) {
    return TrimLeft(Str(value));
}

class DxfWriter {
public:
    void Items(std::initializer_list<std::string_view> items) {
        for (const std::string_view item : items) {
            Item(item);
        }
    }
    void Item(std::string_view item) {
        text_.append(item);
        text_.push_back('\n');
    }

    void Line(float x1, float y1, float x2, float y2) {
        Items({"0", "LINE", "8", DxfGraphLayer});
        Item("10");
        Item(Coordinate(x1 + 10));
        Item("20");
        Item(Coordinate(700 - 2 * y1 - 10));
        Item("11");
        Item(Coordinate(x2 + 10));
        Item("21");
        Item(Coordinate(700 - 2 * y2 - 10));
    }

    void Text(float row, float column, std::string_view text) {
        Items({"0", "TEXT", "8", DxfGraphLayer});
        Item("10");
        Item(Coordinate(column * 8));
        Item("20");
        Item(Coordinate(700 - row * 16));
        Items({"40", "8", "1"});
        Item(text);
    }

    std::string Take() { return std::move(text_); }

private:
    std::string text_;
};

void WriteHeader(DxfWriter& dxf) {
    dxf.Items({"0", "SECTION", "2", "HEADER"});
    dxf.Items({"9", "$EXTMIN", "10", "0.0", "20", "0.0"});
    dxf.Items({"9", "$EXTMAX", "10", ExtentWidth, "20", "60.0"});
    dxf.Items({"9", "$LIMMIN", "10", "0.0", "20", "0.0"});
    dxf.Items({"9", "$LIMMAX", "10", ExtentWidth, "20", "60.0"});
    // The group codes 8 and 7 of these two variables are those the drawing has always carried.
    dxf.Items({"9", "$TEXTSTYLE", "8", "STANDARD"});
    dxf.Items({"9", "$CLAYER", "7", DxfGraphLayer});
    dxf.Items({"0", "ENDSEC"});
    dxf.Items({"0", "SECTION", "2", "TABLES"});
    dxf.Items({"0", "TABLE", "2", "LTYPE", "70", "1"});
    dxf.Items({"0", "LTYPE", "2", "CONTINUOUS", "70", "64", "3", "Solid line", "72", "65", "73",
               "0", "40", "0.0"});
    dxf.Items({"0", "ENDTAB"});
    dxf.Items({"0", "TABLE", "2", "LAYER", "70", "1"});
    dxf.Items({"0", "LAYER", "2", DxfGraphLayer, "70", "64", "62", "15", "6", "CONTINUOUS"});
    dxf.Items({"0", "ENDTAB"});
    dxf.Items({"0", "TABLE", "2", "STYLE", "70", "1"});
    dxf.Items({"0", "STYLE", "2", "SIMPLEX", "70", "0", "40", "0.0", "41", "1.0", "50", "0.0", "71",
               "0", "42", "1.0", "3", "TXT"});
    dxf.Items({"0", "ENDTAB"});
    dxf.Items({"0", "ENDSEC"});
    dxf.Items({"0", "SECTION", "2", "ENTITIES"});
}

// The values of the first test and the demand point as the drawing uses them.
struct DrawnValues {
    float S = 0, R = 0, Qt = 0, Pc = 0, Qc = 0;
};

float WholePart(Single value) {
    return static_cast<float>(RoundHalfEven(value));
}

DrawnValues Rounded(const GraphData& data) {
    return {WholePart(data.StaticPressure), WholePart(data.ResidualPressure),
            WholePart(data.TestFlow), WholePart(data.DemandPressure), WholePart(data.DemandFlow)};
}

bool Drawable(const GraphData& data, const DrawnValues& whole) {
    if (std::fabs(whole.R) > std::fabs(whole.S)) {
        return false;
    }
    const bool allZero =
        whole.S == 0 && whole.R == 0 && whole.Qt == 0 && whole.Pc == 0 && whole.Qc == 0;
    if (!allZero) {
        return true;
    }
    // Everything rounds to nothing: the typed values themselves decide.
    return !(std::fabs(data.ResidualPressure) > std::fabs(data.StaticPressure) ||
             std::fabs(data.TestFlow) > data.StaticPressure);
}

// The scales of the chart: pressure to height, flow to width.
struct Chart {
    float PressureFactor = 0; // chart units per psi
    float FlowMultiplier = 1; // M: thousands of gpm across the flow axis

    float Y(float pressure) const { return ChartHeight - pressure * PressureFactor; }
    float X(double flow) const {
        return static_cast<float>(std::pow(flow / FlowMultiplier / 1000, Power) * ChartWidth +
                                  LeftOffset);
    }
};

float GridX(int i) {
    return static_cast<float>(std::pow(i * 0.05, Power) * ChartWidth + LeftOffset);
}

// Steps 3 and 4: the axis letters and the pressure labels; the number of divisions.
int WritePressureLabels(DxfWriter& dxf, bool lowScale) {
    dxf.Text(9, 0, "P");
    dxf.Text(11, 0, "S");
    dxf.Text(13, 0, "I");
    const int top = lowScale ? 120 : 160;
    int row = 1;
    int label = 0;
    for (int value = top; value >= 0; value -= 20) {
        const float column = value >= 100 ? 1.0f : (value >= 10 ? 2.0f : 3.0f);
        dxf.Text(static_cast<float>(row), column, std::to_string(value));
        ++label;
        if (lowScale) {
            row += 3;
        } else {
            row += (label == 3 || label == 6) ? 3 : 2;
        }
    }
    return lowScale ? 6 : 8;
}

void WriteGrid(DxfWriter& dxf, int divisions) {
    for (int i = 1; i <= Ticks; ++i) {
        const float x = GridX(i);
        dxf.Line(x, 0, x, ChartHeight);
    }
    const int step = static_cast<int>(ChartHeight / static_cast<float>(divisions));
    for (int y = 0; y <= static_cast<int>(ChartHeight); y += step) {
        dxf.Line(LeftOffset + ChartWidth, static_cast<float>(y), LeftOffset, static_cast<float>(y));
    }
    for (int i = 1; i <= Ticks; ++i) {
        const int column = static_cast<int>(GridX(i) / 8) - (i == Ticks ? 1 : 0) + 1;
        dxf.Text(20, static_cast<float>(column), NumberText(i / 2.0));
    }
}

struct CurveEnds {
    float X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
};

// A supply curve: a straight line from the static pressure at no flow to where it meets the
// bottom of the chart, or to the chart's right end.
CurveEnds WriteSupplyCurve(DxfWriter& dxf, const Chart& chart, float s, float r, float q) {
    const double k = (s - r) / std::pow(static_cast<double>(q), Power);
    const double noPressureFlow = std::exp(std::log(s / k) / Power);
    CurveEnds ends{LeftOffset, chart.Y(s), 0, 0};
    const float endX = chart.X(noPressureFlow);
    if (endX <= LeftOffset + ChartWidth) {
        ends.X2 = endX;
        ends.Y2 = ChartHeight;
    } else {
        const double endFlow = static_cast<double>(chart.FlowMultiplier) * 1000;
        const auto pressure = static_cast<float>(s - k * std::pow(endFlow, Power));
        ends.X2 = LeftOffset + ChartWidth;
        ends.Y2 = chart.Y(pressure);
    }
    dxf.Line(ends.X1, ends.Y1, ends.X2, ends.Y2);
    return ends;
}

float LabelRow(const CurveEnds& ends) {
    return (ends.Y1 + ends.Y2) / 2 / 800 * 69 + 10 - 10;
}

float LabelColumn(const CurveEnds& ends) {
    return (ends.X1 + ends.X2) / 2 / 144 * 18 + 1;
}

// A value right-justified in a cell the width of the blank string.
std::string Cell(const std::string& value) {
    return value.size() >= CellWidth ? value : std::string(CellWidth - value.size(), ' ') + value;
}

void WriteDemandPoint(DxfWriter& dxf, const Chart& chart, const DrawnValues& v, bool lowScale) {
    const float x = chart.X(v.Qc);
    const float y = chart.Y(v.Pc);
    const float d = lowScale ? 3.0f : 2.0f;
    dxf.Line(x - 3, y - d, x + 3, y - d);
    dxf.Line(x + 3, y - d, x + 3, y + d);
    dxf.Line(x + 3, y + d, x - 3, y + d);
    dxf.Line(x - 3, y + d, x - 3, y - d);
}

} // namespace

GraphData GraphDataOf(const SystemData& system) {
    auto given = [](Single value) { return value < 0.000001f ? 0.0f : value; };
    GraphData data;
    data.StaticPressure = system.TestStaticPressure;
    data.ResidualPressure = system.TestResidualPressure;
    data.TestFlow = system.TestFlowRate;
    data.SecondStaticPressure = given(system.SecondTestStaticPressure);
    data.SecondResidualPressure = given(system.SecondTestResidualPressure);
    data.SecondTestFlow = given(system.SecondTestFlowRate);
    data.ExteriorHoseFlow = system.ExteriorHoseFlow;
    data.DemandPressure = system.CalculatedResidualPressure;
    data.DemandFlow = system.CalculatedFlowRate;
    return data;
}

bool HasSecondTest(const GraphData& data) {
    return data.SecondStaticPressure != 0 && data.SecondResidualPressure != 0 &&
           data.SecondTestFlow != 0;
}

std::optional<std::string> DxfGraphText(const GraphData& data) {
    DrawnValues v = Rounded(data);
    if (!Drawable(data, v)) {
        return std::nullopt;
    }
    for (float* value : {&v.S, &v.R, &v.Qt, &v.Pc, &v.Qc}) {
        if (*value <= 0) {
            *value = 1;
        }
    }
    if (v.R == v.S) {
        v.R = v.S - 0.001f;
    }
    const auto excess =
        static_cast<float>((v.S - v.Pc) - (v.S - v.R) * std::pow(v.Qc / v.Qt, Power));
    Chart chart;
    chart.FlowMultiplier = std::floor((v.Qc - 1) / 1000) + 1;
    const bool lowFactor = std::fabs(v.Pc) <= 120 && std::fabs(v.S) <= 120;
    chart.PressureFactor = lowFactor ? 144.0f / 120.0f : 144.0f / 160.0f;
    const bool lowLabels =
        lowFactor && data.SecondStaticPressure <= 120 && data.SecondResidualPressure <= 120;

    DxfWriter dxf;
    WriteHeader(dxf);
    const int divisions = WritePressureLabels(dxf, lowLabels);
    WriteGrid(dxf, divisions);
    dxf.Text(21, 31, "GPM = Chart Value x");
    dxf.Text(21, 50, NumberText(chart.FlowMultiplier * 100));

    const CurveEnds first = WriteSupplyCurve(dxf, chart, v.S, v.R, v.Qt);
    dxf.Text(LabelRow(first), LabelColumn(first), "Supply Curve");
    if (HasSecondTest(data)) {
        const CurveEnds second = WriteSupplyCurve(dxf, chart, data.SecondStaticPressure,
                                                  data.SecondResidualPressure, data.SecondTestFlow);
        float row = LabelRow(second);
        if (!(first.Y2 < second.Y2)) {
            row -= 20;
        }
        dxf.Text(row, 18,
                 "Supply Curve with " + std::to_string(data.ExteriorHoseFlow) + " " +
                     " exterior hose");
    }
    WriteDemandPoint(dxf, chart, v, lowFactor);

    dxf.Text(23, 4,
             "ADJUSTED HYDRANT DATA:" + Cell(NumberText(v.Qt)) + " GPM," + Cell(NumberText(v.S)) +
                 " STATIC PSI," + Cell(NumberText(v.R)) + " RESIDUAL PSI");
    dxf.Text(24, 4,
             "DEMAND POINT DATA:" + Cell(NumberText(v.Qc)) + " GPM," + Cell(NumberText(v.Pc)) +
                 " GAUGE  PSI," + Cell(Format(excess, "####0.00")) + " EXCESS   PSI");
    dxf.Items({"0", "ENDSEC", "0", "EOF"});
    return dxf.Take();
}

DxfGraphOutcome WriteDxfGraph(const Project& project, const std::filesystem::path& file,
                              Dialogs& dialogs, std::string* error) {
    if (project.UnitSystem == 1) {
        dialogs.ShowMessage(MessageStyle::Information, "", DxfMetricMessage);
        return DxfGraphOutcome::Metric;
    }
    const auto text = DxfGraphText(GraphDataOf(project.SystemData));
    if (!text) {
        return DxfGraphOutcome::ImpossibleTest;
    }
    return WriteFileAtomically(file, *text, error) ? DxfGraphOutcome::Written
                                                   : DxfGraphOutcome::WriteFailed;
}

} // namespace quench
