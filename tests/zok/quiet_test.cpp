// SPDX-License-Identifier: MIT
// Distributions leave the thread's mode word, error callback and status as they found them, and
// what kernels report inside reaches nobody.
#include <errno.h>
#include <orv/qem.h>
#include <stdlib.h>

#include <thread>

#include "distributions.hpp"

using namespace orv_test;

namespace {

int calls = 0;
int32_t own_callback(QemErrorContext*) { return ++calls; }

struct Words {
  QemMode mode;
  QemErrorCallBack callback;
  int32_t status;
  bool operator==(const Words&) const = default;
};

Words words() {
  return {orv_qem_kernel_GetMode(), orv_qem_kernel_GetErrorCallBack(),
          orv_qem_kernel_GetErrStatus()};
}

/// Words with fields of 0 come from the environment only, so each has a thread of its own.
const char* const environments[] = {
    "",
    "QEM_DEFAULT_PRECISION",
    "QEM_LA",
    "QEM_EP,QEM_ERRMODE_STDERR",
    "QEM_DOUBLE_CONSISTEN",
    "QEM_HA,QEM_FLOAT_CONSISTENT,QEM_ERRMODE_ERRNO,QEM_ERRMODE_EXCEPT",
    "QEM_ERRMODE_IGNORE",
    "QEM_RESTORE,QEM_ERRMODE_CALLBACK",
};

template <class T>
void expect_quiet(const NamedDraw<T>& draw, StreamState* stream) {
  T r[20];
  for (const char* const environment : environments) {
    setenv("ORV_QEM_MODE", environment, 1);
    for (const QemMode denormals : {0, int{DENORMALS_KEPT}, int{DENORMALS_FLUSHED}}) {
      for (const QemErrorCallBack callback : {QemErrorCallBack{}, QemErrorCallBack{own_callback}}) {
        for (const int32_t status : {0, 4, -2}) {
          std::thread([&] {
            orv_qem_kernel_SetMode(denormals);
            if (callback != nullptr) orv_qem_kernel_SetErrorCallBack(callback);
            orv_qem_kernel_SetErrStatus(status);
            const Words before = words();
            errno = 0;
            draw.draw(stream, 20, r);
            EXPECT_EQ(errno, 0) << draw.name;
            EXPECT_EQ(words(), before) << draw.name << ' ' << environment;
          }).join();
        }
      }
    }
    std::thread([&] {  // the environment is read later than the draw
      draw.draw(stream, 20, r);
      setenv("ORV_QEM_MODE", "QEM_EP", 1);
      EXPECT_EQ(orv_qem_kernel_GetMode(), QemMode{QEM_EP}) << draw.name;
    })
        .join();
  }
  unsetenv("ORV_QEM_MODE");
  EXPECT_EQ(calls, 0) << draw.name;
}

/// Half of the numbers make a logarithm report; a stream that fails half way is left as quietly.
template <class T>
void expect_all_quiet() {
  const Given<T> numbers({0, T(0.25), 1, T(0.5), T(0.75), T(0.125), 0});
  Stream failing(Spy::brng());
  for (const NamedDraw<T>& draw : continuous_draws<T>()) {
    expect_quiet(draw, numbers);
    Spy::answer = RNG_QRNG_EXHAUSTED;
    expect_quiet(draw, failing);
    T r[20];
    EXPECT_EQ(draw.draw(failing, 20, r), RNG_QRNG_EXHAUSTED) << draw.name;
    Spy::answer = RNG_OK;
  }
}

void expect_all_integers_quiet() {
  const Given<double> doubles({0, 0.25, 1, 0.5, 0.75, 0.125, 0});
  const Given<float> floats({0, 0.25f, 1, 0.5f, 0.75f, 0.125f, 0});
  for (const Discrete& d : discrete_draws()) {
    const bool of_floats = d.kind == Discrete::gaussian;
    StreamState* const streams[] = {doubles, floats};
    expect_quiet<int32_t>({d.name, d.draw}, streams[of_floats]);
    expect_quiet<int32_t>({d.name, d.draw}, streams[!of_floats]);  // fails
  }
}

TEST(Distributions, LeaveTheThreadsWordsAlone) {
  expect_all_quiet<double>();
  expect_all_quiet<float>();
  expect_all_integers_quiet();
}

}  // namespace
