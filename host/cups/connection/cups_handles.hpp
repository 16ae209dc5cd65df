#pragma once

#include <memory>

#include <cups/cups.h>
#include <cups/ppd.h>

namespace tandemtrim::host {

/// A deleter that calls this function.
template <auto function>
struct EndedBy {
  template <class Handle>
  void operator()(Handle* handle) const {
    function(handle);
  }
};

inline void freeDestination(cups_dest_t* destination) { cupsFreeDests(1, destination); }

using AddressesHandle = std::unique_ptr<http_addrlist_t, EndedBy<httpAddrFreeList>>;
using HttpHandle = std::unique_ptr<http_t, EndedBy<httpClose>>;
using MessageHandle = std::unique_ptr<ipp_t, EndedBy<ippDelete>>;
using DestinationHandle = std::unique_ptr<cups_dest_t, EndedBy<freeDestination>>;
using PpdHandle = std::unique_ptr<ppd_file_t, EndedBy<ppdClose>>;

}  // namespace tandemtrim::host
