#include <Corvane/Rasterloom/Host/Stream.h>

namespace Corvane::Rasterloom::Host {

Stream::~Stream() = default;

} // namespace Corvane::Rasterloom::Host
