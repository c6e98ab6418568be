// What `kiv help NAME` says of a member, and the reference of the whole
// interface (docs/reference.md), both made from the dispatch tables.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/dispatch.hpp"

namespace kiv::script {

// The signature, the help line, each parameter (type, passing, default),
// what the member changes in its arguments, the result (with the members of
// its enumeration) and the example with what it prints.
std::string MemberHelp(const ClassInfo& owner, const Member& member);

// "Enum NAME" and its members, one per line.
std::string EnumerationHelp(const EnumInfo& e);

// Subject headings of the interface in member order: the comment line that
// stands before each group of rows in the interface table's source.
using Subjects = std::vector<std::pair<std::string, std::vector<std::string>>>;
Subjects SubjectsOfTableSource(std::string_view source);

// The whole reference in Markdown.
std::string ReferenceMarkdown(const Subjects& subjects);

}  // namespace kiv::script
