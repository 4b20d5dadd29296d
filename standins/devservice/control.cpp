// The addresses under /control, by which a test orders faults and looks at what was sent.
#include "devservice/json_fields.h"
#include "devservice/service.h"

#include <nlohmann/json.hpp>

namespace devservice {
namespace {

using nlohmann::json;

void Done(httplib::Response& response) {
    response.set_content("{\"ok\":true}", "application/json");
}

// Runs `change` on the request's JSON body; what is wrong with it becomes a 400.
template <typename Change>
void Apply(const httplib::Request& request, httplib::Response& response, Change change) {
    try {
        change(json::parse(request.body));
        Done(response);
    } catch (const std::exception& error) {
        response.status = 400;
        response.set_content(
            json{{"error", error.what()}}.dump(-1, ' ', false, json::error_handler_t::replace),
            "application/json");
    }
}

} // namespace

void Service::AttachControl(HttpFront& front) {
    front.Post(
        "/control/faults", [this](const httplib::Request& request, httplib::Response& response) {
            Apply(request, response, [this](const json& order) {
                faults_.Add(order.at("token").get<std::string>(), FaultFromJson(order.at("fault")));
            });
        });
    front.Delete("/control/faults", [this](const httplib::Request&, httplib::Response& response) {
        faults_.Clear();
        Done(response);
    });
    front.Post("/control/accounts",
               [this](const httplib::Request& request, httplib::Response& response) {
                   Apply(request, response,
                         [this](const json& order) { accounts_.Put(AccountFromJson(order)); });
               });
    front.Get("/control/requests", [this](const httplib::Request&, httplib::Response& response) {
        auto list = nlohmann::ordered_json::array();
        const std::lock_guard lock(recordedMutex_);
        for (const auto& head : recorded_)
            list.push_back(DescribeRequest(head, 0));
        response.set_content(list.dump(2, ' ', false, json::error_handler_t::replace),
                             "application/json");
    });
    front.Delete("/control/requests", [this](const httplib::Request&, httplib::Response& response) {
        const std::lock_guard lock(recordedMutex_);
        recorded_.clear();
        Done(response);
    });
}

} // namespace devservice
