#include "platform/linux/drawing/PathData.h"

#include <QTransform>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

namespace quillbar::platform {

namespace {

struct Arc {
    QPointF radii;
    double rotation = 0;
    bool isLarge = false;
    bool isClockwise = false;
};

double squaredLength(QPointF const& point)
{
    return QPointF::dotProduct(point, point);
}

/// Appends an arc from the path's end, as Bézier curves of a quarter circle at most.
void appendArc(QPainterPath& path, Arc const& arc, QPointF const& end)
{
    auto const start = path.currentPosition();
    if (arc.radii.x() == 0 || arc.radii.y() == 0 || start == end) {
        path.lineTo(end);
        return;
    }
    // In a space where the ellipse is a circle of radius 1.
    QTransform fromCircle;
    fromCircle.rotate(arc.rotation).scale(std::abs(arc.radii.x()), std::abs(arc.radii.y()));
    auto from = fromCircle.inverted().map(start);
    auto to = fromCircle.inverted().map(end);
    // Radii too short to reach are made longer.
    if (auto const reach = std::sqrt(squaredLength(to - from)) / 2; reach > 1) {
        fromCircle.scale(reach, reach);
        from /= reach;
        to /= reach;
    }
    auto const chord = to - from;
    auto const offset = std::sqrt(std::max(0.0, 1 / squaredLength(chord) - 0.25));
    auto const side = arc.isLarge == arc.isClockwise ? offset : -offset;
    auto const center = (from + to) / 2 + QPointF(chord.y(), -chord.x()) * side;

    auto const angleOf = [&](QPointF const& point) {
        return std::atan2(point.y() - center.y(), point.x() - center.x());
    };
    constexpr auto fullTurn = 2 * std::numbers::pi;
    auto sweep = angleOf(to) - angleOf(from);
    if (arc.isClockwise && sweep < 0)
        sweep += fullTurn;
    else if (!arc.isClockwise && sweep > 0)
        sweep -= fullTurn;

    auto const count = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (fullTurn / 4))));
    auto const step = sweep / count;
    auto const handle = 4.0 / 3 * std::tan(step / 4);
    for (int i = 0; i < count; ++i) {
        auto const first = angleOf(from) + i * step;
        auto const last = first + step;
        QPointF const a(std::cos(first), std::sin(first));
        QPointF const b(std::cos(last), std::sin(last));
        path.cubicTo(fromCircle.map(center + a + QPointF(-a.y(), a.x()) * handle),
            fromCircle.map(center + b - QPointF(-b.y(), b.x()) * handle),
            i + 1 == count ? end : fromCircle.map(center + b));
    }
}

class PathReader {
public:
    explicit PathReader(std::string_view data)
        : rest_(data)
    {
    }

    std::optional<QPainterPath> read()
    {
        char command = 0;
        for (skipSeparators(); !rest_.empty(); skipSeparators()) {
            if (isLetter(rest_.front())) {
                command = rest_.front();
                rest_.remove_prefix(1);
            } else if (command == 'M') {
                command = 'L';
            } else if (command == 'm') {
                command = 'l';
            } else if (command == 0 || isClosing(command)) {
                return std::nullopt;
            }
            // Anything may be drawn only from a point.
            if (path_.elementCount() == 0 && command != 'M' && command != 'm')
                return std::nullopt;
            if (!append(command))
                return std::nullopt;
            last_ = static_cast<char>(command | lowerCase);
        }
        return path_;
    }

private:
    static constexpr char lowerCase = 0x20;

    static bool isLetter(char character)
    {
        auto const lower = character | lowerCase;
        return lower >= 'a' && lower <= 'z';
    }
    static bool isClosing(char command) { return command == 'z' || command == 'Z'; }

    void skipSeparators()
    {
        auto const count = rest_.find_first_not_of(" \t\r\n,");
        rest_.remove_prefix(count == std::string_view::npos ? rest_.size() : count);
    }

    bool number(double& value)
    {
        skipSeparators();
        if (rest_.starts_with('+'))
            rest_.remove_prefix(1);
        auto const [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (error != std::errc() || !std::isfinite(value))
            return false;
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return true;
    }

    /// One digit; the next number may follow at once.
    bool flag(bool& value)
    {
        skipSeparators();
        if (!rest_.starts_with('0') && !rest_.starts_with('1'))
            return false;
        value = rest_.front() == '1';
        rest_.remove_prefix(1);
        return true;
    }

    bool point(QPointF& value)
    {
        double x = 0;
        double y = 0;
        if (!number(x) || !number(y))
            return false;
        value = origin_ + QPointF(x, y);
        return true;
    }

    bool append(char command)
    {
        auto const isRelative = (command & lowerCase) != 0;
        auto const current = path_.currentPosition();
        origin_ = isRelative ? current : QPointF();
        switch (command | lowerCase) {
        case 'm':
            return appendMove();
        case 'l':
            return appendLine();
        case 'h':
            return appendStraight(current, &QPointF::setX, origin_.x());
        case 'v':
            return appendStraight(current, &QPointF::setY, origin_.y());
        case 'c':
            return appendCubic(std::nullopt);
        case 's':
            return appendCubic(reflectedControl('c', 's'));
        case 'q':
            return appendQuadratic(std::nullopt);
        case 't':
            return appendQuadratic(reflectedControl('q', 't'));
        case 'a':
            return appendArcTo();
        case 'z':
            path_.closeSubpath();
            return true;
        default:
            return false;
        }
    }

    bool appendMove()
    {
        QPointF to;
        if (!point(to))
            return false;
        path_.moveTo(to);
        return true;
    }

    bool appendLine()
    {
        QPointF to;
        if (!point(to))
            return false;
        path_.lineTo(to);
        return true;
    }

    bool appendStraight(QPointF to, void (QPointF::*setCoordinate)(double), double origin)
    {
        double coordinate = 0;
        if (!number(coordinate))
            return false;
        (to.*setCoordinate)(origin + coordinate);
        path_.lineTo(to);
        return true;
    }

    /// The curve before, mirrored, so that the next goes on smoothly.
    [[nodiscard]] QPointF reflectedControl(char curve, char smoothCurve) const
    {
        auto const current = path_.currentPosition();
        return last_ == curve || last_ == smoothCurve ? 2 * current - control_ : current;
    }

    bool appendCubic(std::optional<QPointF> first)
    {
        QPointF given;
        QPointF to;
        if ((!first && !point(given)) || !point(control_) || !point(to))
            return false;
        path_.cubicTo(first.value_or(given), control_, to);
        return true;
    }

    bool appendQuadratic(std::optional<QPointF> control)
    {
        QPointF given;
        QPointF to;
        if ((!control && !point(given)) || !point(to))
            return false;
        control_ = control.value_or(given);
        path_.quadTo(control_, to);
        return true;
    }

    bool appendArcTo()
    {
        Arc arc;
        double radiusX = 0;
        double radiusY = 0;
        QPointF to;
        if (!number(radiusX) || !number(radiusY) || !number(arc.rotation) || !flag(arc.isLarge)
            || !flag(arc.isClockwise) || !point(to))
            return false;
        arc.radii = { radiusX, radiusY };
        appendArc(path_, arc, to);
        return true;
    }

    std::string_view rest_;
    QPainterPath path_;
    QPointF origin_;
    QPointF control_;
    char last_ = 0;
};

} // namespace

std::optional<QPainterPath> parsePathData(std::string_view data)
{
    return PathReader(data).read();
}

} // namespace quillbar::platform
