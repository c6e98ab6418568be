#include "frame/locale.hpp"

namespace kiv {

const Locale& CurrentLocale() {
    static const Locale italian;
    return italian;
}

}  // namespace kiv
