// The identifiers of the automation server, fixed once and kept: a host
// compiled against the type library or a registered client finds them again
// in every build. Plain text, so the build machine's type-library generator
// shares them with the server without Windows headers.
#pragma once

#include <string_view>

namespace kiv::com {

inline constexpr std::string_view kLibraryName = "DLLKiv";
inline constexpr std::string_view kLibraryId = "521b08ba-b2b5-4647-bf8a-4ae17f2f7400";
inline constexpr std::string_view kPrtStruId = "29af1315-b101-4478-a08e-85570ef856b8";

struct ClassIds {
    std::string_view className;  // as in the class list of the dispatch tables
    std::string_view classId;
    std::string_view interfaceId;
};

// One row per creatable class; a class without a row fails the build of the
// type library.
inline constexpr ClassIds kClassIds[] = {
    {"Cl_KIV", "f566bf98-db4c-48d2-b8a4-029f99ed4d01", "cf06cfad-5d33-4f8d-9e5c-79324a78e0db"},
    {"Col_KIV", "ab55dc51-a7e8-44d9-8d0e-b043e97b5c44", "ec922e83-9dde-4eaa-a50e-c508db47a5f9"},
};

inline const ClassIds* FindClassIds(std::string_view className) {
    for (const ClassIds& ids : kClassIds)
        if (ids.className == className) return &ids;
    return nullptr;
}

}  // namespace kiv::com
