// Not written yet.
#include "frame/runtime.hpp"
#include "frame/errors.hpp"

namespace kiv {

String FormatPattern(const Variant& /*value*/, const String& /*pattern*/) { raise(kNotSupported); }

}  // namespace kiv
