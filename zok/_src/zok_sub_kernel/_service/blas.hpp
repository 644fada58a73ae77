// SPDX-License-Identifier: MIT
// The matrix routines of BLAS and LAPACK, with one name for both precisions. Matrices are stored by
// columns; a letter's length follows the arguments, as Fortran passes it.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace orv {
inline namespace ORV_TAG {

/// Held during a call. Threads are the caller's and must not multiply: OpenBLAS built with OpenMP
/// takes as many as OpenMP allows the thread that calls, here one. Built without threads it hands
/// out the same work memory to calls at the same time: these wait for each other.
class MatrixCall {
 public:
  MatrixCall();
  ~MatrixCall();
  MatrixCall(const MatrixCall&) = delete;
  MatrixCall& operator=(const MatrixCall&) = delete;

 private:
  int threads_allowed_ = 1;
};

}  // namespace ORV_TAG
}  // namespace orv

#define ORV_MATRIX_ROUTINES(X, T)                                                                  \
  extern "C" {                                                                                     \
  void X##gemm_(const char* transa, const char* transb, const int32_t* m, const int32_t* n,        \
                const int32_t* k, const T* alpha, const T* a, const int32_t* lda, const T* b,      \
                const int32_t* ldb, const T* beta, T* c, const int32_t* ldc, size_t, size_t);      \
  void X##trmm_(const char* side, const char* uplo, const char* transa, const char* diag,          \
                const int32_t* m, const int32_t* n, const T* alpha, const T* a,                    \
                const int32_t* lda, T* b, const int32_t* ldb, size_t, size_t, size_t, size_t);     \
  void X##gemv_(const char* trans, const int32_t* m, const int32_t* n, const T* alpha, const T* a, \
                const int32_t* lda, const T* x, const int32_t* incx, const T* beta, T* y,          \
                const int32_t* incy, size_t);                                                      \
  void X##trtri_(const char* uplo, const char* diag, const int32_t* n, T* a, const int32_t* lda,   \
                 int32_t* info, size_t, size_t);                                                   \
  void X##spevd_(const char* jobz, const char* uplo, const int32_t* n, T* ap, T* w, T* z,          \
                 const int32_t* ldz, T* work, const int32_t* lwork, int32_t* iwork,                \
                 const int32_t* liwork, int32_t* info, size_t, size_t);                            \
  void X##syrk_(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,           \
                const T* alpha, const T* a, const int32_t* lda, const T* beta, T* c,               \
                const int32_t* ldc, size_t, size_t);                                               \
  void X##symm_(const char* side, const char* uplo, const int32_t* m, const int32_t* n,            \
                const T* alpha, const T* a, const int32_t* lda, const T* b, const int32_t* ldb,    \
                const T* beta, T* c, const int32_t* ldc, size_t, size_t);                          \
  void X##syr_(const char* uplo, const int32_t* n, const T* alpha, const T* x,                     \
               const int32_t* incx, T* a, const int32_t* lda, size_t);                             \
  void X##potrf_(const char* uplo, const int32_t* n, T* a, const int32_t* lda, int32_t* info,      \
                 size_t);                                                                          \
  void X##potri_(const char* uplo, const int32_t* n, T* a, const int32_t* lda, int32_t* info,      \
                 size_t);                                                                          \
  void X##syev_(const char* jobz, const char* uplo, const int32_t* n, T* a, const int32_t* lda,    \
                T* w, T* work, const int32_t* lwork, int32_t* info, size_t, size_t);               \
  }                                                                                                \
  namespace orv {                                                                                  \
  inline namespace ORV_TAG {                                                                       \
  /* C = alpha op(A) op(B) + beta C, op(A) m by k. */                                              \
  inline void gemm(char transa, char transb, int32_t m, int32_t n, int32_t k, T alpha, const T* a, \
                   int32_t lda, const T* b, int32_t ldb, T beta, T* c, int32_t ldc) {              \
    const MatrixCall call;                                                                         \
    X##gemm_(&transa, &transb, &m, &n, &k, &alpha, a, &lda, b, &ldb, &beta, c, &ldc, 1, 1);        \
  }                                                                                                \
  /* B = alpha op(A) B (side l) or alpha B op(A) (r), A triangular, B m by n. */                   \
  inline void trmm(char side, char uplo, char transa, char diag, int32_t m, int32_t n, T alpha,    \
                   const T* a, int32_t lda, T* b, int32_t ldb) {                                   \
    const MatrixCall call;                                                                         \
    X##trmm_(&side, &uplo, &transa, &diag, &m, &n, &alpha, a, &lda, b, &ldb, 1, 1, 1, 1);          \
  }                                                                                                \
  /* y = alpha op(A) x + beta y, A m by n. */                                                      \
  inline void gemv(char trans, int32_t m, int32_t n, T alpha, const T* a, int32_t lda, const T* x, \
                   T beta, T* y) {                                                                 \
    const int32_t step = 1;                                                                        \
    const MatrixCall call;                                                                         \
    X##gemv_(&trans, &m, &n, &alpha, a, &lda, x, &step, &beta, y, &step, 1);                       \
  }                                                                                                \
  /* Inverse of a triangular matrix in place; 0, or which element of the diagonal is zero. */      \
  inline int32_t trtri(char uplo, char diag, int32_t n, T* a, int32_t lda) {                       \
    int32_t info = 0;                                                                              \
    const MatrixCall call;                                                                         \
    X##trtri_(&uplo, &diag, &n, a, &lda, &info, 1, 1);                                             \
    return info;                                                                                   \
  }                                                                                                \
  /* Eigenvalues, ascending, and eigenvectors, as the columns of z, of a symmetric matrix whose     \
  triangle uplo is packed by columns, and destroyed; 0, or how many numbers of an intermediate      \
  form did not converge. `work` has 1 + 6 n + n^2 elements, `integers` 3 + 5 n. */                  \
  inline int32_t spevd(char uplo, int32_t n, T* ap, T* values, T* z, T* work, int32_t* integers) { \
    const char jobz = 'V';                                                                         \
    const int32_t lwork = 1 + 6 * n + n * n, liwork = 3 + 5 * n;                                   \
    int32_t info = 0;                                                                              \
    const MatrixCall call;                                                                         \
    X##spevd_(&jobz, &uplo, &n, ap, values, z, &n, work, &lwork, integers, &liwork, &info, 1, 1);  \
    return info;                                                                                   \
  }                                                                                                \
  /* C = alpha A A' + beta C (trans n, A n by k) or alpha A' A + beta C (t, A k by n). */          \
  inline void syrk(char uplo, char trans, int32_t n, int32_t k, T alpha, const T* a, int32_t lda,  \
                   T beta, T* c, int32_t ldc) {                                                    \
    const MatrixCall call;                                                                         \
    X##syrk_(&uplo, &trans, &n, &k, &alpha, a, &lda, &beta, c, &ldc, 1, 1);                        \
  }                                                                                                \
  /* C = alpha A B + beta C (side l) or alpha B A + beta C (r), A symmetric, C m by n. */          \
  inline void symm(char side, char uplo, int32_t m, int32_t n, T alpha, const T* a, int32_t lda,   \
                   const T* b, int32_t ldb, T beta, T* c, int32_t ldc) {                           \
    const MatrixCall call;                                                                         \
    X##symm_(&side, &uplo, &m, &n, &alpha, a, &lda, b, &ldb, &beta, c, &ldc, 1, 1);                \
  }                                                                                                \
  /* A += alpha x x'. */                                                                           \
  inline void syr(char uplo, int32_t n, T alpha, const T* x, T* a, int32_t lda) {                  \
    const int32_t step = 1;                                                                        \
    const MatrixCall call;                                                                         \
    X##syr_(&uplo, &n, &alpha, x, &step, a, &lda, 1);                                              \
  }                                                                                                \
  /* Cholesky factor in place; 0, or which leading minor is not positive. */                       \
  inline int32_t potrf(char uplo, int32_t n, T* a, int32_t lda) {                                  \
    int32_t info = 0;                                                                              \
    const MatrixCall call;                                                                         \
    X##potrf_(&uplo, &n, a, &lda, &info, 1);                                                       \
    return info;                                                                                   \
  }                                                                                                \
  /* Inverse from the Cholesky factor, in place; 0, or which element of the factor is zero. */     \
  inline int32_t potri(char uplo, int32_t n, T* a, int32_t lda) {                                  \
    int32_t info = 0;                                                                              \
    const MatrixCall call;                                                                         \
    X##potri_(&uplo, &n, a, &lda, &info, 1);                                                       \
    return info;                                                                                   \
  }                                                                                                \
  /* Eigenvalues, ascending, of a symmetric matrix of which uplo is read, and with jobz V in its   \
  place the eigenvectors as columns; with N it is destroyed. 0, or how many numbers of an          \
  intermediate form did not converge. `work` has lwork elements, 3 n or more. */                   \
  inline int32_t syev(char jobz, char uplo, int32_t n, T* a, int32_t lda, T* values, T* work,      \
                      int32_t lwork) {                                                             \
    int32_t info = 0;                                                                              \
    const MatrixCall call;                                                                         \
    X##syev_(&jobz, &uplo, &n, a, &lda, values, work, &lwork, &info, 1, 1);                        \
    return info;                                                                                   \
  }                                                                                                \
  }                                                                                                \
  }

ORV_MATRIX_ROUTINES(d, double)
ORV_MATRIX_ROUTINES(s, float)
#undef ORV_MATRIX_ROUTINES
