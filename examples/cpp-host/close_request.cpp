#include "close_request.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace host {

CloseRequest::CloseRequest() : descriptor_(eventfd(0, EFD_CLOEXEC)) {
  if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

CloseRequest::~CloseRequest() { close(descriptor_); }

void CloseRequest::Make() const { eventfd_write(descriptor_, 1); }

}  // namespace host
