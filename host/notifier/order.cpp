#include "host/notifier/order.hpp"

#include <nlohmann/json.hpp>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

using OrderJson = nlohmann::json;

constexpr int kLongestWatch = 600;  // seconds

OrderJson jsonOfText(const NotificationText& text) {
  return {{"heading", text.heading}, {"body", text.body}};
}

NotificationText notificationIn(const OrderJson& order, const char* key) {
  const auto& text = order.at(key);
  return {text.at("heading").get<std::string>(), text.at("body").get<std::string>()};
}

}  // namespace

std::chrono::seconds longestTimeFor(const NotifierOrder& order) { return order.watched + kTimeForAnswers; }

std::string orderText(const NotifierOrder& order) {
  OrderJson json{{"printer", order.printer},           {"job", order.job},
                 {"sent", jsonOfText(order.sent)},     {"cancelled", jsonOfText(order.cancelled)},
                 {"failed", jsonOfText(order.failed)}, {"watched", order.watched.count()}};
  if (order.server) json["server"] = *order.server;
  return json.dump(-1, ' ', false, OrderJson::error_handler_t::replace);
}

NotifierOrder orderFrom(const std::string& text) {
  try {
    const auto json = OrderJson::parse(text);
    NotifierOrder order;
    if (json.contains("server")) order.server = json.at("server").get<std::string>();
    order.printer = json.at("printer").get<std::string>();
    order.job = json.at("job").get<int>();
    order.sent = notificationIn(json, "sent");
    order.cancelled = notificationIn(json, "cancelled");
    order.failed = notificationIn(json, "failed");
    const auto watched = json.at("watched").get<int>();
    if (watched < 0 || watched > kLongestWatch) throw Failure("a job is not watched for so long");
    order.watched = std::chrono::seconds(watched);
    return order;
  } catch (const OrderJson::exception& wrong) {
    throw Failure(wrong.what());
  }
}

}  // namespace tandemtrim::host
