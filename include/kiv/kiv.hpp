// The component for C++ hosts: the value model, the Cl_KIV class whose
// members are the operations, and the dispatch entry points that call any
// member late-bound by name with Variant arguments.
//
//   #include <kiv/kiv.hpp>
//   kiv::Cl_KIV k;
//   std::string text = kiv::ToUtf8(k.FmtNum(1234.5, 10, 2, true));
#pragma once

#include "frame/value.hpp"
#include "frame/errors.hpp"
#include "frame/strings.hpp"
#include "frame/convert.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/col_kiv.hpp"
#include "frame/dispatch.hpp"
