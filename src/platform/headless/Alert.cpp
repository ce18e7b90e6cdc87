#include "platform/view/Alert.h"

#include "platform/headless/Headless.h"
#include "platform/headless/State.h"

#include <deque>

namespace quillbar::platform {

namespace {

struct Alerts {
    std::deque<std::function<AlertAnswer(Alert const&)>> answers;
    std::vector<Alert> shown;
};
headless::State<Alerts> alerts;

} // namespace

AlertAnswer runModal(Alert const& alert)
{
    headless::note("runModal");
    alerts->shown.push_back(alert);
    if (alerts->answers.empty()) {
        return { .button = alert.buttons.empty() ? 0 : alert.buttons.size() - 1,
            .text = alert.accessory ? alert.accessory->text : std::string() };
    }
    auto const answer = std::move(alerts->answers.front());
    alerts->answers.pop_front();
    return answer(alert);
}

namespace headless {

void queueAlertAnswer(AlertAnswer answer)
{
    queueAlertAnswer([answer = std::move(answer)](Alert const&) { return answer; });
}

void queueAlertAnswer(std::function<AlertAnswer(Alert const&)> answer)
{
    alerts->answers.push_back(std::move(answer));
}

std::vector<Alert> const& shownAlerts()
{
    return alerts->shown;
}

} // namespace headless

} // namespace quillbar::platform
