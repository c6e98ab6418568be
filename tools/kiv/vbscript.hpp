// A conformance file as a VBScript that drives the automation server
// ("DLLKiv.Cl_KIV") the way a Windows script host does, prints each case's
// result in the canonical form and compares it with the expected lines.
#pragma once

#include <string>

#include "runner.hpp"

namespace kiv::script {

// The whole script, ASCII only. For each case it prints one line:
//   PASS <line>  |  DIFF <line> got: ... want: ...  |  SKIP <line> <reason>
// and, last, "VBSCONF-OK <cases>" (the sentinel the harness requires).
std::string ToVbScript(const Script& script);

}  // namespace kiv::script
