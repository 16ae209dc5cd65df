#include "host/cups/connection/name_lookup.hpp"

#include <future>
#include <thread>

#include <sys/socket.h>

#include "host/cups/connection/block_signals.hpp"

namespace tandemtrim::host {

// On a separate thread, because the system's look-up cannot be interrupted. One that takes too long is
// abandoned.
AddressesHandle addressesOf(const std::string& host, int port, std::chrono::seconds longest) {
  std::packaged_task<AddressesHandle()> lookUp([host, service = std::to_string(port)] {
    return AddressesHandle(httpAddrGetList(host.c_str(), AF_UNSPEC, service.c_str()));
  });
  auto addresses = lookUp.get_future();
  std::thread([lookUp = std::move(lookUp)]() mutable {
    blockSignals();
    lookUp();
  }).detach();
  return addresses.wait_for(longest) == std::future_status::ready ? addresses.get() : nullptr;
}

}  // namespace tandemtrim::host
