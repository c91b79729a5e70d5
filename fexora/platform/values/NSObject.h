// The root of the classes whose chosen members an application may reach by name, without the type.
//
// Each class says in its own header which members those are; every other name answers nothing or
// false. A selector with an argument ends in a colon, as in "hasCurrency:".
// Used from the thread that its class allows.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fexora/platform/values/Value.h"

namespace fexora {

class FEXORA_API NSObject {
 public:
  NSObject() = default;
  NSObject(const NSObject&) = default;
  NSObject(NSObject&&) = default;
  NSObject& operator=(const NSObject&) = default;
  NSObject& operator=(NSObject&&) = default;
  virtual ~NSObject();

  // The printed form. The root class prints nothing but its kind, "<NSObject>".
  virtual std::string description() const;

  // The readable member `name`; "description" is one in every class.
  virtual std::optional<Value> valueForKey(std::string_view name) const;
  // False when there is no such settable member or the value is of the wrong kind; then nothing
  // has changed.
  virtual bool setValueForKey(std::string_view name, const Value& value);
  // Calls an operation; one without a result gives the null value. Nothing when there is no such
  // operation or its arguments do not fit.
  virtual std::optional<Value> perform(std::string_view selector, const Array& arguments = {});
};

}  // namespace fexora
