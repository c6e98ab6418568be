// The host's stand-ins for its forms and controls: objects reached by member
// name exactly as an operation reaches a real host's form, so nothing in the
// component knows that they are the driver's.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frame/dispatchable.hpp"

namespace kiv::script {

// A form or control whose properties come into being by assignment and read
// back by name (case-blind); a member never set is error 438.
class HostObject : public Dispatchable {
public:
    explicit HostObject(std::string typeName) : type_(std::move(typeName)) {}
    std::string typeName() const override { return type_; }
    Variant invoke(std::string_view member, InvokeKind kind, Arguments& args) override;

protected:
    // The value stored under a property, or nullptr.
    Variant* property(std::string_view name);
    void setProperty(std::string_view name, Variant value);

private:
    std::string type_;
    std::map<std::string, Variant> properties_;  // by lower-case name
};

// A list box or combo box: items with their ItemData, the selection and the
// text, as the host's list controls answer; any other member is a property.
class HostListControl final : public HostObject {
public:
    explicit HostListControl(std::string typeName);
    Variant invoke(std::string_view member, InvokeKind kind, Arguments& args) override;

private:
    struct Item {
        String text;
        Long data = 0;
    };
    bool isCombo() const;
    std::size_t at(const Variant& index) const;  // 381 outside the list
    void select(Integer index);
    String text() const;
    void setText(const String& text);

    std::vector<Item> items_;
    Integer listIndex_ = -1;
    Integer newIndex_ = -1;
    String comboText_;
};

// HostObject("ListBox") and HostObject("ComboBox") are list controls; any
// other type name is a property bag.
Object MakeHostObject(const String& typeName);

}  // namespace kiv::script
