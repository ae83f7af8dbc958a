#include "gui/pump_curve_chart.h"

#include "core/formats.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QPainterPath>

namespace quench::gui {
namespace {

constexpr int Samples = 200;
constexpr int Ticks = 5;
// Beyond this a value is no pressure a pump gives: the powers have run away.
constexpr double LargestValue = 1e15;

QString TickText(double value) {
    const std::string text =
        std::abs(value) >= 1e7 ? Format(value, "Scientific") : Format(value, "###,##0.#");
    QString shown = QString::fromStdString(text);
    if (shown.endsWith('.')) {
        shown.chop(1); // a whole number shows without its point
    }
    return shown;
}

// A round upper bound for an axis: 1, 2 or 5 times a power of ten.
double RoundLimit(double value) {
    if (!(value > 0) || !std::isfinite(value)) {
        return 1;
    }
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double step : {1.0, 2.0, 5.0, 10.0}) {
        if (value <= step * power) {
            return step * power;
        }
    }
    return 10 * power;
}

} // namespace

PumpCurveChart::PumpCurveChart(QWidget* parent) : QWidget(parent) {
    setMinimumSize(420, 300);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

void PumpCurveChart::SetCurve(std::vector<CurvePoint> points,
                              const PumpCoefficientArray* coefficients, const QString& pressureUnit,
                              const QString& flowUnit) {
    points_ = std::move(points);
    fitted_ = coefficients != nullptr;
    coefficients_ = fitted_ ? *coefficients : PumpCoefficientArray{};
    pressureUnit_ = pressureUnit;
    flowUnit_ = flowUnit;
    FindLimits();
    update();
}

void PumpCurveChart::FindLimits() {
    double flow = 0;
    double pressure = 0;
    for (const CurvePoint& point : points_) {
        flow = std::max(flow, point.Flow);
        pressure = std::max(pressure, point.Pressure);
    }
    flowLimit_ = RoundLimit(flow * 1.1);
    overflowed_ = false;
    if (fitted_) {
        for (int sample = 0; sample <= Samples; ++sample) {
            const double value = EvaluatePumpCurve(coefficients_, flowLimit_ * sample / Samples);
            if (!std::isfinite(value) || std::abs(value) > LargestValue) {
                overflowed_ = true;
                break;
            }
            if (sample == 0) {
                pressure = std::max(pressure, value);
            }
        }
    }
    pressureLimit_ = RoundLimit(pressure * 1.2);
}

QPointF PumpCurveChart::Place(const QRectF& frame, double flow, double pressure) const {
    // Off the frame is drawn on its edge.
    const double x = std::clamp(flow / flowLimit_, 0.0, 1.0);
    const double y = std::clamp(pressure / pressureLimit_, 0.0, 1.0);
    return {frame.left() + x * frame.width(), frame.bottom() - y * frame.height()};
}

void PumpCurveChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics metrics(font());
    const QRectF frame(metrics.horizontalAdvance("0,000,000") + 16, metrics.height() + 8,
                       width() - metrics.horizontalAdvance("0,000,000") - 32,
                       height() - 3 * metrics.height() - 24);
    if (frame.width() < 20 || frame.height() < 20) {
        return;
    }
    painter.setPen(QPen(palette().color(QPalette::Mid), 0, Qt::DotLine));
    for (int tick = 0; tick <= Ticks; ++tick) {
        const double x = frame.left() + frame.width() * tick / Ticks;
        const double y = frame.bottom() - frame.height() * tick / Ticks;
        painter.drawLine(QPointF(x, frame.top()), QPointF(x, frame.bottom()));
        painter.drawLine(QPointF(frame.left(), y), QPointF(frame.right(), y));
    }
    painter.setPen(palette().color(QPalette::Text));
    painter.drawRect(frame);
    for (int tick = 0; tick <= Ticks; ++tick) {
        const double x = frame.left() + frame.width() * tick / Ticks;
        const double y = frame.bottom() - frame.height() * tick / Ticks;
        const QString flow = TickText(flowLimit_ * tick / Ticks);
        painter.drawText(QPointF(x - metrics.horizontalAdvance(flow) / 2.0,
                                 frame.bottom() + metrics.height() + 2),
                         flow);
        const QString pressure = TickText(pressureLimit_ * tick / Ticks);
        painter.drawText(QPointF(frame.left() - metrics.horizontalAdvance(pressure) - 6,
                                 y + metrics.ascent() / 2.0),
                         pressure);
    }
    painter.drawText(QPointF(frame.center().x() - 40, height() - 6), "Flowrate " + flowUnit_);
    painter.drawText(QPointF(4, metrics.height()), "Pressure " + pressureUnit_);

    if (overflowed_) {
        painter.setPen(Qt::red);
        painter.drawText(frame, Qt::AlignCenter | Qt::TextWordWrap, CurveOverflowText);
    } else if (fitted_) {
        QPainterPath curve;
        for (int sample = 0; sample <= Samples; ++sample) {
            const double flow = flowLimit_ * sample / Samples;
            const QPointF place = Place(frame, flow, EvaluatePumpCurve(coefficients_, flow));
            sample == 0 ? curve.moveTo(place) : curve.lineTo(place);
        }
        painter.setPen(QPen(QColor(0, 70, 160), 2));
        painter.drawPath(curve);
    }
    painter.setPen(QPen(QColor(190, 30, 30), 1.5));
    for (const CurvePoint& point : points_) {
        painter.drawEllipse(Place(frame, point.Flow, point.Pressure), 4, 4);
    }
}

} // namespace quench::gui
