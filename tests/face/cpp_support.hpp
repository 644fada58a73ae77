// SPDX-License-Identifier: MIT
// What tests of the C++ face share.
#pragma once

#include <orv/error.hpp>

#include <functional>
#include <string>

namespace orv_test {

/// The text of what a call throws.
inline std::string refusal(const std::function<void()>& call) {
  try {
    call();
  } catch (const orv::error& e) {
    return e.what();
  }
  return "nothing thrown";
}

}  // namespace orv_test
