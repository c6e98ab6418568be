#include "frame/locale.hpp"

namespace kiv {

const Locale& currentLocale() {
    static const Locale italian;
    return italian;
}

}  // namespace kiv
