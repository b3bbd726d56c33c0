// How a host replaces a platform service at run time.
#ifndef TALLY_PLATFORM_REPLACEABLE_H_
#define TALLY_PLATFORM_REPLACEABLE_H_

#include <memory>
#include <utility>

#include "platform/export.h"

/// Base of every platform service. `TService` declares `static std::shared_ptr<TService>
/// MakePortable()`, the implementation that serves while a host has installed none.
template <class TService>
class TALLY_API CReplaceable {
 public:
  /// The service in force, never null; valid until the next Install.
  static TService* Instance() {
    if (!Slot()) {
      Slot() = TService::MakePortable();
    }
    return Slot().get();
  }

  /// Puts `service` in force and answers the one before it (null if there was none yet); null
  /// brings the portable implementation back.
  static std::shared_ptr<TService> Install(std::shared_ptr<TService> service) {
    return std::exchange(Slot(), std::move(service));
  }

 protected:
  CReplaceable() = default;
  ~CReplaceable() = default;

 private:
  static std::shared_ptr<TService>& Slot() {
    static std::shared_ptr<TService> slot;
    return slot;
  }
};

#endif  // TALLY_PLATFORM_REPLACEABLE_H_
