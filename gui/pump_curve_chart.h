#pragma once

// frmPumpCurve: the fitted pump curve drawn over its points. The frame of the plot holds the
// points with a margin; the curve is clipped to it. A curve whose arithmetic overflows is not
// drawn: the chart shows why instead.

#include "library/pump_curve.h"

#include <vector>

#include <QString>
#include <QWidget>

namespace quench::gui {

constexpr const char* CurveOverflowText =
    "Values are too large and cause an error.  Please reduce some values.";

class PumpCurveChart : public QWidget {
    Q_OBJECT

public:
    explicit PumpCurveChart(QWidget* parent = nullptr);

    // The points and, when fitted, the curve through them; pressures in `pressureUnit`, flows in
    // `flowUnit`.
    void SetCurve(std::vector<CurvePoint> points, const PumpCoefficientArray* coefficients,
                  const QString& pressureUnit, const QString& flowUnit = "gpm");
    // True when the last curve overflowed and was not drawn.
    bool Overflowed() const { return overflowed_; }
    // The largest flow and pressure the frame shows.
    double FlowLimit() const { return flowLimit_; }
    double PressureLimit() const { return pressureLimit_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void FindLimits();
    QPointF Place(const QRectF& frame, double flow, double pressure) const;

    std::vector<CurvePoint> points_;
    PumpCoefficientArray coefficients_{};
    bool fitted_ = false;
    bool overflowed_ = false;
    double flowLimit_ = 1;
    double pressureLimit_ = 1;
    QString pressureUnit_ = "psi";
    QString flowUnit_ = "gpm";
};

} // namespace quench::gui
