// SPDX-License-Identifier: MIT
#include "thread_cells.hpp"

#include <pthread.h>
#include <stdlib.h>
#include <string.h>

namespace orv {
namespace {

constexpr size_t cell_bytes = 8;

template <class Word>
Word* thread_cell(pthread_once_t& once, void (*create_key)(), const pthread_key_t& key) {
  static_assert(sizeof(Word) <= cell_bytes);
  pthread_once(&once, create_key);
  void* block = pthread_getspecific(key);
  if (block == nullptr) {
    block = malloc(cell_bytes);
    if (block == nullptr) return nullptr;
    memset(block, 0, sizeof(Word));
    pthread_setspecific(key, block);
  }
  return static_cast<Word*>(block);
}

pthread_key_t Mode_key;
pthread_once_t Mode_konce = PTHREAD_ONCE_INIT;
void Mode_destroy(void* block) { free(block); }
void Mode_alloc_key() { pthread_key_create(&Mode_key, Mode_destroy); }

pthread_key_t ErrStatus_key;
pthread_once_t ErrStatus_konce = PTHREAD_ONCE_INIT;
void ErrStatus_destroy(void* block) { free(block); }
void ErrStatus_alloc_key() { pthread_key_create(&ErrStatus_key, ErrStatus_destroy); }

pthread_key_t CallBack_key;
pthread_once_t CallBack_konce = PTHREAD_ONCE_INIT;
void CallBack_destroy(void* block) { free(block); }
void CallBack_alloc_key() { pthread_key_create(&CallBack_key, CallBack_destroy); }

pthread_key_t InputVecorPointer_key;
pthread_once_t InputVecorPointer_konce = PTHREAD_ONCE_INIT;
void InputVecorPointer_destroy(void* block) { free(block); }
void InputVecorPointer_alloc_key() {
  pthread_key_create(&InputVecorPointer_key, InputVecorPointer_destroy);
}

}  // namespace

QemMode* _GetMode() { return thread_cell<QemMode>(Mode_konce, Mode_alloc_key, Mode_key); }

int32_t* _GetErrStatus() {
  return thread_cell<int32_t>(ErrStatus_konce, ErrStatus_alloc_key, ErrStatus_key);
}

QemErrorCallBack* _GetCallBack() {
  return thread_cell<QemErrorCallBack>(CallBack_konce, CallBack_alloc_key, CallBack_key);
}

const void** _GetInputVectorPointer() {
  return thread_cell<const void*>(InputVecorPointer_konce, InputVecorPointer_alloc_key,
                                  InputVecorPointer_key);
}

}  // namespace orv
