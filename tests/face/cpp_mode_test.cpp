// SPDX-License-Identifier: MIT
// What lasts for a scope: modes, callbacks, collected reports. And what a throwing callback does.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <orv/math.hpp>

#include <cerrno>
#include <cfenv>
#include <cmath>
#include <stdexcept>
#include <thread>

namespace {

using V = std::vector<double>;

int c_calls = 0;
int32_t count_calls(QemErrorContext*) {
  ++c_calls;
  return 1;
}

TEST(CppMode, ScopesSetWhatIsNamedAndRestore) {
  const QemMode before = orv_qem_kernel_GetMode() & ~QEM_DENORMALS_MASK;
  {
    const orv::scoped_mode outer(orv::la, orv::route::silent | orv::route::set_errno);
    EXPECT_EQ(orv::current_level(), orv::la);
    {
      const orv::scoped_mode inner(orv::denormals::flushed);
      EXPECT_EQ(orv_qem_kernel_GetMode(),
                QEM_LA | QEM_ERRMODE_IGNORE | QEM_ERRMODE_ERRNO | DENORMALS_FLUSHED);
    }
    EXPECT_EQ(orv_qem_kernel_GetMode(),
              QEM_LA | QEM_ERRMODE_IGNORE | QEM_ERRMODE_ERRNO | DENORMALS_KEPT);
    const V x(100, 0.3);
    EXPECT_EQ(orv::exp(x), orv::exp(x, orv::la));
    EXPECT_NE(orv::exp(x), orv::exp(x, orv::ep));
    EXPECT_THROW(
        {
          const orv::scoped_mode lost(orv::ep);
          throw std::runtime_error("out of the scope");
        },
        std::runtime_error);
    EXPECT_EQ(orv::current_level(), orv::la);
  }
  EXPECT_EQ(orv_qem_kernel_GetMode() & ~QEM_DENORMALS_MASK, before);
}

TEST(CppMode, AnEnvironmentWithoutALevelMeansHighAccuracy) {
  setenv("ORV_QEM_MODE", "QEM_ERRMODE_ERRNO", 1);
  std::thread([] {
    EXPECT_EQ(orv_qem_kernel_GetTTableIndex(), -1);
    const V x(50, 0.7);
    EXPECT_EQ(orv::exp(x), orv::exp(x, orv::ha));
    { const orv::scoped_mode mode(orv::ep); }
    EXPECT_EQ(orv::current_level(), orv::ha);
  }).join();
  unsetenv("ORV_QEM_MODE");
}

TEST(CppMode, CollectsReportsAndTakesNoOtherRoute) {
  const std::complex<double> huge(800, 1);
  std::vector<orv::report> reports;
  errno = 0;
  {
    const orv::scoped_mode mode(orv::route::set_errno);
    const orv::collect collecting(reports);
    orv::ln(V{1, 0, 2, -3});
    orv::exp(std::vector{huge});
    orv::pow(V{0}, V{-2});
    const orv::scoped_mode silent(orv::route::silent);
    orv::ln(V{-1});
  }
  EXPECT_EQ(errno, 0);
  ASSERT_EQ(reports.size(), 4u);
  EXPECT_EQ(reports[0].index, 1u);
  EXPECT_EQ(reports[0].code, QEM_STATUS_SINGULARITY);
  EXPECT_EQ(reports[0].result.real(), -HUGE_VAL);
  EXPECT_EQ(reports[1].index, 3u);
  EXPECT_EQ(reports[1].argument.real(), -3);
  EXPECT_EQ(reports[1].function, "vdLn");
  EXPECT_EQ(reports[2].argument, huge);
  EXPECT_EQ(reports[3].function, "vdPow");
}

TEST(CppMode, CallbacksChangeResultsAndNest) {
  const auto at_first = orv_qem_kernel_SetErrorCallBack(count_calls);
  c_calls = 0;
  {
    int outer_calls = 0;
    const orv::scoped_callback outer([&](orv::report&) { ++outer_calls; });
    const orv::scoped_callback inner([&](orv::report& r) {
      if (r.code == QEM_STATUS_SINGULARITY) {
        r.result = -700;
        orv::ln(V{-1});  // reports to the outer one
        return false;
      }
      r.result = 5;
      return true;  // dealt with: nothing is stored
    });
    const V y = orv::ln(V{0, -1, 1});
    EXPECT_EQ(y[0], -700);
    EXPECT_TRUE(std::isnan(y[1]));
    EXPECT_EQ(outer_calls, 1);
    std::thread([] { orv::ln(V{-1}); }).join();  // another thread has no callback
    EXPECT_EQ(outer_calls, 1);
  }
  EXPECT_EQ(c_calls, 0);
  orv::ln(V{0});
  EXPECT_EQ(c_calls, 1);
  orv_qem_kernel_SetErrorCallBack(at_first);
}

TEST(CppMode, WhatACallbackThrowsComesWhenAllElementsAreComputed) {
  int calls = 0;
  std::fesetround(FE_UPWARD);
  {
    orv::scoped_callback throwing([&](orv::report& r) {
      ++calls;
      throw std::out_of_range(std::to_string(r.index));
    });
    V y(5, 7);
    try {
      orv::ln(V{1, -1, 0, -2, 1}, y);
      ADD_FAILURE() << "nothing thrown";
    } catch (const std::out_of_range& e) {
      EXPECT_STREQ(e.what(), "1");
    }
    EXPECT_EQ(std::fegetround(), FE_UPWARD);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(std::isnan(y[1]) && std::isnan(y[3]) && y[2] == -HUGE_VAL && y[4] == 0);
    EXPECT_THROW(orv::ln(V{-1}), std::out_of_range);  // it is called again
    EXPECT_NO_THROW(orv::ln(V{1}));

    const double x = -1;
    _qemdLn(1, &x, y.data());  // can't throw
    EXPECT_THROW(throwing.rethrow(), std::out_of_range);
    EXPECT_NO_THROW(throwing.rethrow());
    _qemdLn(1, &x, y.data());
    EXPECT_THROW(orv::ln(V{1}), std::out_of_range);
    _qemdLn(1, &x, y.data());  // dropped with the scope
  }
  std::fesetround(FE_TONEAREST);
  EXPECT_NO_THROW(orv::ln(V{-1}));
}

}  // namespace
