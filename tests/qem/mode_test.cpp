// SPDX-License-Identifier: MIT
// The thread's mode word, status, callback and input base.
#include <optional>
#include <sstream>

#include "harness.hpp"

using namespace orv_test;

namespace {

/// `count` copies of a token, each with a comma behind it.
std::string repeat(int count, const char* token) {
  std::string text;
  for (int i = 0; i < count; ++i) text += std::string(token) + ",";
  return text;
}

TEST(Mode, EnvironmentGrammar) {
  // 27 times 7 characters and 5 times 12 put the last token at 253 (it ends at 255); 34 times 7 and
  // one 12 put it a place further.
  const std::string fits = repeat(27, "QEM_LA") + repeat(5, "QEM_RESTORE") + "QEM_EP";
  const std::string too_far = repeat(34, "QEM_LA") + repeat(1, "QEM_RESTORE") + "QEM_EP";
  std::vector<std::pair<std::optional<std::string>, int64_t>> cases = {
      {std::nullopt, -1},
      {"QEM_LA", 0x1},
      {"QEM_HA", 0x2},
      {"QEM_EP", 0x3},
      {"QEM_DEFAULT_PRECISION", 0},
      {"QEM_FLOAT_CONSISTENT", 0x10},
      {"QEM_DOUBLE_CONSISTEN", 0x20},
      {"QEM_RESTORE", 0x30},
      {"QEM_ERRMODE_IGNORE", 0x100},
      {"QEM_ERRMODE_ERRNO", 0x200},
      {"QEM_ERRMODE_STDERR", 0x400},
      {"QEM_ERRMODE_EXCEPT", 0x800},
      {"QEM_ERRMODE_CALLBACK", 0x1000},
      {"QEM_ERRMODE_DEFAULT", 0x1A00},
      {"QEM_EP,QEM_ERRMODE_STDERR", 0x403},
      {"QEM_ERRMODE_STDERR,QEM_EP", 0x403},
      {"QEM_LA,QEM_HA", 0x3},
      {"QEM_LA,QEM_LA", 0x1},
      {"QEM_HA,QEM_DEFAULT_PRECISION", 0x2},
      {"QEM_ERRMODE_DEFAULT,QEM_LA,QEM_RESTORE", 0x1A31},
      {fits, 0x33},
  };
  std::istringstream refused(
      "|X|QEM_DOUBLE_CONSISTENT|QEM_LA,|,QEM_LA|QEM_LA,,QEM_HA| QEM_LA|QEM_LA |QEM_LA, QEM_HA|"
      "QEM_LA;QEM_HA|QEM_LAX|QEM_L|QEM_|QEM|Q|LA|qem_la|QEM_la|QEM_HA,QEM_NO|"
      "QEM_DENORMALS_FLUSHED|" +
      too_far);
  for (std::string value; std::getline(refused, value, '|');) cases.emplace_back(value, -1);
  for (const auto& c : cases) {
    in_thread_with_mode(c.first ? c.first->c_str() : nullptr, [&] {
      SCOPED_TRACE(c.first.value_or("no variable"));
      EXPECT_EQ(orv_qem_kernel_ReadEnvVarMode(), c.second);
      EXPECT_EQ(orv_qem_kernel_GetMode(), c.second == -1 ? 0x1A02u : QemMode(c.second));
    });
  }
}

TEST(Mode, EachThreadReadsTheEnvironmentOnce) {
  in_thread_with_mode("QEM_DEFAULT_PRECISION", [] {
    EXPECT_EQ(orv_qem_kernel_GetMode(), 0u);  // a word of 0 counts as not yet read
    setenv("ORV_QEM_MODE", "QEM_LA", 1);
    EXPECT_EQ(orv_qem_kernel_GetMode(), 1u);
    setenv("ORV_QEM_MODE", "QEM_EP", 1);
    EXPECT_EQ(orv_qem_kernel_GetMode(), 1u);
    in_fresh_thread([] { EXPECT_EQ(orv_qem_kernel_GetMode(), 3u); });
    EXPECT_EQ(orv_qem_kernel_GetMode(), 1u);
  });
}

TEST(Mode, SetReplacesFieldsThatAreNotZero) {
  const struct {
    const char* environment;
    QemMode argument, before, after;
  } cases[] = {
      {nullptr, 0, 0x1A02, 0x1A02},
      {nullptr, 1, 0x1A02, 0x1A01},
      {nullptr, 0xF, 0x1A02, 0x1A0F},
      {nullptr, 0x100, 0x1A02, 0x102},
      {nullptr, 0xE000, 0x1A02, 0xE002},
      {nullptr, 0x280000, 0x1A02, 0x281A02},
      {nullptr, 0x140403, 0x1A02, 0x140403},
      {nullptr, 0xFFC300F0, 0x1A02, 0x1A02},
      {nullptr, 0xFFFFFFFF, 0x1A02, 0x3CFF0F},
      {"QEM_RESTORE,QEM_HA", 0x280101, 0x32, 0x280131},
      {"QEM_LA", 0x1000, 0x1, 0x1001},
  };
  for (const auto& c : cases) {
    in_thread_with_mode(c.environment, [&] {
      SCOPED_TRACE(testing::Message() << std::hex << c.argument);
      EXPECT_EQ(orv_qem_kernel_SetMode(c.argument), c.before);
      EXPECT_EQ(orv_qem_kernel_GetMode(), c.after);
    });
  }
}

int32_t callback_1(QemErrorContext*) { return 0; }
int32_t callback_2(QemErrorContext*) { return 0; }

TEST(Mode, CallbackSetsAndClearsItsRoute) {
  const struct {
    const char* environment;
    QemMode set, cleared;
  } cases[] = {
      {nullptr, 0x1A02, 0xA02},
      {"QEM_HA,QEM_ERRMODE_ERRNO", 0x1202, 0x202},
      {"QEM_LA", 0x1001, 0x1001},  // the only route cannot be taken away
      {"QEM_ERRMODE_CALLBACK", 0x1000, 0x1000},
  };
  for (const auto& c : cases) {
    in_thread_with_mode(c.environment, [&] {
      EXPECT_EQ(orv_qem_kernel_GetErrorCallBack(), nullptr);
      EXPECT_EQ(orv_qem_kernel_SetErrorCallBack(callback_1), nullptr);
      EXPECT_EQ(orv_qem_kernel_GetMode(), c.set);
      EXPECT_EQ(orv_qem_kernel_SetErrorCallBack(callback_2), callback_1);
      EXPECT_EQ(orv_qem_kernel_GetMode(), c.set);
      EXPECT_EQ(orv_qem_kernel_GetErrorCallBack(), callback_2);
      EXPECT_EQ(orv_qem_kernel_ClearErrorCallBack(), callback_2);
      EXPECT_EQ(orv_qem_kernel_GetMode(), c.cleared);
      EXPECT_EQ(orv_qem_kernel_GetErrorCallBack(), nullptr);
    });
  }
}

TEST(Mode, TableIndex) {
  in_thread_with_mode("QEM_ERRMODE_DEFAULT", [] {
    for (const int32_t unused : {0, 1, -7, 0x1A03}) {
      EXPECT_EQ(orv_qem_kernel_GetTTableIndexM(unused, 0x1A01), 0);
      EXPECT_EQ(orv_qem_kernel_GetTTableIndexM(unused, 0x3C0003), 2);
      EXPECT_EQ(orv_qem_kernel_GetTTableIndexM(unused, 0x1A00), -1);
      EXPECT_EQ(orv_qem_kernel_GetTTableIndexM(unused, 0xF), 14);
    }
    setenv("ORV_QEM_MODE", "QEM_ERRMODE_DEFAULT,QEM_ERRMODE_STDERR",
           1);  // the thread's word is still unread
    EXPECT_EQ(orv_qem_kernel_GetMode(), 0x1E00u);
    EXPECT_EQ(orv_qem_kernel_GetTTableIndex(), -1);
    orv_qem_kernel_SetMode(15);
    EXPECT_EQ(orv_qem_kernel_GetTTableIndex(), 14);
  });
  EXPECT_EQ(dll_cpu_version(), 0);
}

}  // namespace
