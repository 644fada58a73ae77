/* SPDX-License-Identifier: MIT */
/* Summary statistics: a task describes the data and where results go, compute entries do the work.
 *
 *     SSTask* task;
 *     int32_t p = 3, n = 1000, layout = SS_COLUMNS;
 *     double mean[3], raw2[3], variance[3];
 *     __zokdSSNewTask(&task, &p, &n, &layout, data, 0, 0, 0);
 *     __zokdSSEditTask(task, SS_PARAM_MEAN, mean);
 *     __zokdSSEditTask(task, SS_PARAM_RAW_MOMENT_2, raw2);
 *     __zokdSSEditTask(task, SS_PARAM_CENTRAL_MOMENT_2, variance);
 *     _zokdSSBasic(task, SS_EST_CEN2, SS_METHOD_FAST, &services);
 *     __zokSSDeleteTask(&task);
 *
 * A task holds addresses only: of the caller's data, of the caller's results, and of the integers
 * that describe them (sizes, storage codes). Nothing is copied, every compute entry reads through
 * the addresses again, and no editor but __zokdSSEditTask's kind checks what it is given. Names
 * with `d` are for doubles, those with `s` the same for floats. A task has one user at a time.
 *
 * Integers are 32 bits wide, or 64 for a task made with int_is_64. Every function returns a status:
 * SS_OK or one of the negative codes below. */
#ifndef ORV_SS_H
#define ORV_SS_H

#include <stdint.h>
#include <string.h>

#ifndef ORV_API
#define ORV_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Layout of n observations of p variables. */
enum {
  SS_ROWS = 0x10000,   /**< variable j is a row: observation i of it at j n + i */
  SS_COLUMNS = 0x20000 /**< variable j is a column: observation i of it at i p + j */
};

/** Storage of a symmetric p by p matrix. */
enum {
  SS_MATRIX_FULL = 0,         /**< p p elements, both triangles */
  SS_MATRIX_LOWER_PACKED = 1, /**< the p (p + 1) / 2 elements of the lower triangle, row by row */
  SS_MATRIX_UPPER_PACKED = 2  /**< those of the upper triangle, row by row */
};

/** What is asked of a compute entry: any of its bits, joined. In parentheses: what else the task
 *  must have a place for. W is the sum of weights and W2 that of their squares; without weights
 * each observation has weight 1. m, r2, r3, r4 are weighted means of x, x^2, x^3, x^4. */
enum {
  SS_EST_MEAN = 0x1,            /**< m */
  SS_EST_RAW2 = 0x2,            /**< r2 */
  SS_EST_RAW3 = 0x4,            /**< r3 */
  SS_EST_RAW4 = 0x8,            /**< r4 */
  SS_EST_CEN2 = 0x10,           /**< c2 = W^2 / (W^2 - W2) (r2 - m^2), unbiased (mean, raw 2) */
  SS_EST_CEN3 = 0x20,           /**< c3 = r3 - 3 r2 m + 2 m^3 (mean, raw 2, 3) */
  SS_EST_CEN4 = 0x40,           /**< c4 = r4 - 4 r3 m + 6 r2 m^2 - 3 m^4 (mean, raw 2 to 4) */
  SS_EST_KURTOSIS = 0x80,       /**< c4 / c2^2 - 3 (central 2, 4); ask for what these need, too */
  SS_EST_SKEWNESS = 0x100,      /**< c3 / c2^(3/2) (central 2, 3); ask for what these need, too */
  SS_EST_VARIATION = 0x200,     /**< sqrt(c2) / m (mean, central 2); ask for what these need, too */
  SS_EST_MIN = 0x400,           /**< least value, or what `minimum` held before */
  SS_EST_MAX = 0x800,           /**< largest value, or what `maximum` held before */
  SS_EST_COV = 0x1000,          /**< covariance, scatter over W - W2 / W (mean) */
  SS_EST_COR = 0x2000,          /**< correlation, with the variances on its diagonal (mean) */
  SS_EST_POOLED = 0x4000,       /**< pooled covariance and mean of the groups */
  SS_EST_GROUP = 0x8000,        /**< covariance and mean of single groups */
  SS_EST_QUANTILES = 0x10000,   /**< quantiles */
  SS_EST_ORDER_STATS = 0x20000, /**< sorted data */
  SS_EST_PARTIAL_COV = 0x100000, /**< covariance of some variables given others */
  SS_EST_PARTIAL_COR = 0x200000  /**< its correlation, with the variances on the diagonal */
};

/** How: an entry takes the bits named with it and needs one of them. */
enum {
  SS_METHOD_FAST = 0x1,     /**< _zokdSSBasic with matrix routines; Minmax, Quantiles, Partial */
  SS_METHOD_ONE_PASS = 0x2, /**< _zokdSSBasic by updates, stable (wins over FAST); Minmax, Pooled */
  SS_METHOD_SPECTRAL_DECOMP = 0x4, /**< _zokdSSCorParametrization: by eigenvalues */
  SS_METHOD_TBS = 0x8,             /**< _zokdSSRobustCovariance */
  SS_METHOD_MULTIPLE_IMPUTATION = 0x10,
  SS_METHOD_BACON = 0x20, /**< _zokdSSOutliersDetection */
  SS_METHOD_STREAM_QUERY = 0x40,
  SS_METHOD_STREAM_ADD = 0x80
};

/** Status codes. */
enum {
  SS_OK = 0,
  SS_BAD_PARAMETER = -3,            /**< not a parameter of this editor */
  SS_NO_MEMORY = -4000,             /**< out of memory */
  SS_BAD_DIMENSION = -4001,         /**< dimension missing or below 1 */
  SS_BAD_OBSERVATION_COUNT = -4002, /**< observation count missing or too small */
  SS_BAD_STORAGE = -4003,           /**< storage code missing or not allowed */
  SS_BAD_MASK = -4004,              /**< variable mask null, empty or not the former one */
  SS_NULL_WEIGHTS = -4005,          /* null, or missing where it is needed, from here to -4028: */
  SS_NULL_MEAN = -4006,
  SS_NULL_RAW_MOMENT_2 = -4007,
  SS_NULL_RAW_MOMENT_3 = -4008,
  SS_NULL_RAW_MOMENT_4 = -4009,
  SS_NULL_CENTRAL_MOMENT_2 = -4010,
  SS_NULL_CENTRAL_MOMENT_3 = -4011,
  SS_NULL_CENTRAL_MOMENT_4 = -4012,
  SS_NULL_KURTOSIS = -4013,
  SS_NULL_SKEWNESS = -4014,
  SS_NULL_MINIMUM = -4015,
  SS_NULL_MAXIMUM = -4016,
  SS_NULL_VARIATION = -4017,
  SS_NULL_COV = -4018,
  SS_NULL_COR = -4019,
  SS_NULL_ACCUMULATED_WEIGHTS = -4020,
  SS_NULL_QUANT_ORDERS = -4021,
  SS_BAD_QUANT_ORDERS = -4022, /**< count of orders missing or negative, or one outside [0, 1] */
  SS_NULL_QUANTILES = -4023,
  SS_NULL_ORDER_STATS = -4024,
  SS_NOT_CONVERGED = -4026, /**< an iteration did not end within its limit */
  SS_NULL_ROBUST_MEAN = -4027,
  SS_NULL_ROBUST_COV = -4028,
  SS_BAD_METHOD = -4029,         /**< the method has none of the bits that this entry takes */
  SS_NULL_GROUP_INDICES = -4030, /**< group indices missing */
  SS_NULL_TASK = -4031,
  SS_NULL_OBSERVATIONS = -4032,      /**< observations missing, or too few (robust covariance) */
  SS_NO_POSITIVE_EIGENVALUE = -4033, /**< a covariance matrix that can't be repaired */
  SS_NULL_POOLED_COV = -4034,
  SS_NULL_POOLED_MEAN = -4035,
  SS_NULL_GROUP_COV = -4036,
  SS_NULL_GROUP_MEANS = -4037,
  SS_BAD_GROUP_INDICES = -4038, /**< group index negative, selection not 0 or 1, or array null */
  SS_NULL_OUTLIER_PARAMS = -4039,
  SS_NULL_OUTLIER_PARAM_COUNT = -4040,
  SS_NULL_OUTLIER_WEIGHTS = -4041,
  SS_NULL_ROBUST_PARAMS = -4042,
  SS_NULL_ROBUST_PARAM_COUNT = -4043,
  SS_NULL_STORAGE = -4044, /**< a storage code is missing */
  SS_NULL_PARTIAL_INDEX = -4045,
  SS_NULL_PARTIAL_COV = -4046,
  SS_NULL_PARTIAL_COR = -4047,
  SS_NULL_MISSING_PARAMS = -4048,
  SS_NULL_MISSING_PARAM_COUNT = -4049,
  SS_BAD_MISSING_PARAM_COUNT = -4050,
  SS_BAD_MISSING_PARAMS = -4051, /**< a count of iterations or imputations below 1 */
  SS_NULL_INIT_ESTIMATES_COUNT = -4052,
  SS_NULL_INIT_ESTIMATES = -4053,
  SS_NULL_SIMULATED_VALUES = -4054,
  SS_NULL_SIMULATED_COUNT = -4055,
  SS_NULL_ESTIMATES_COUNT = -4056,
  SS_NULL_ESTIMATES = -4057,
  SS_BAD_SIMULATED_COUNT = -4058,
  SS_BAD_ESTIMATES_COUNT = -4059,
  SS_NOTHING_ASKED = -4060, /**< neither simulated values nor estimates asked for */
  SS_NULL_PRIOR_COUNT = -4061,
  SS_NULL_PRIOR = -4062,
  SS_BAD_MISSING_COUNT = -4063, /**< number of missing values doesn't agree with the parameters */
  SS_NULL_STREAM_PARAM_COUNT = -4064,
  SS_NULL_STREAM_PARAMS = -4065,
  SS_BAD_STREAM_PARAM_COUNT = -4066,
  SS_BAD_STREAM_EPSILON = -4067,
  SS_NULL_STREAM_ORDERS = -4068,
  SS_BAD_STREAM_ORDERS = -4069,
  SS_NULL_STREAM_QUANTILES = -4070,
  SS_NULL_PARAMETRIZED_COR = -4071,
  SS_NOT_POSITIVE = -4072,      /**< the matrix has no positive eigenvalue */
  SS_BAD_PARTIAL_INDEX = -4073, /**< no conditioning variable, or none of interest */
  SS_OGK_FAILED = -5000,     /**< robust covariance: no eigenvectors of the pairs' correlations */
  SS_FACTOR_FAILED = -5010,  /**< the conditioning variables' covariance has no Cholesky factor */
  SS_INVERSE_FAILED = -5011, /**< it could not be inverted */
  SS_CONDITIONAL_NOT_POSITIVE = -5021, /**< missing given observed values: no Cholesky factor */
  SS_IMPUTATION_FAILED = -5022,        /**< missing values could not be drawn */
  SS_POSTERIOR_FAILED = -5023,      /**< nor mean and covariance: too few observations, as a rule */
  SS_SPECTRUM_FAILED = -5030,       /**< the eigenvalues of a correlation matrix did not converge */
  SS_EIGENVALUES_FAILED = -5040,    /**< the eigenvalues of a covariance matrix did not converge */
  SS_NOT_POSITIVE_DEFINITE = -5041, /**< a covariance matrix has no Cholesky factor */
  SS_SINGULAR = -5042 /**< a covariance matrix could not be inverted from its factor */
};

/** Parameters of the editors. Those marked int belong to __zokiSSEditTask, all others to
 *  __zokdSSEditTask and __zoksSSEditTask. Arrays: p variables, n observations, q orders. */
enum {
  SS_PARAM_DIMENSION = 1,       /**< int: p */
  SS_PARAM_OBSERVATION_COUNT,   /**< int: n */
  SS_PARAM_OBSERVATIONS,        /**< n p values */
  SS_PARAM_OBSERVATION_STORAGE, /**< int: SS_ROWS or SS_COLUMNS */
  SS_PARAM_VARIABLE_MASK,       /**< int: p; a variable with entry 0 is left out */
  SS_PARAM_WEIGHTS,             /**< n */
  SS_PARAM_MEAN,                /**< p, as all single moments */
  SS_PARAM_RAW_MOMENT_2,
  SS_PARAM_RAW_MOMENT_3,
  SS_PARAM_RAW_MOMENT_4,
  SS_PARAM_CENTRAL_MOMENT_2,
  SS_PARAM_CENTRAL_MOMENT_3,
  SS_PARAM_CENTRAL_MOMENT_4,
  SS_PARAM_KURTOSIS,
  SS_PARAM_SKEWNESS,
  SS_PARAM_MINIMUM, /**< p; holds the start of the search */
  SS_PARAM_MAXIMUM, /**< p; holds the start of the search */
  SS_PARAM_VARIATION,
  SS_PARAM_COV,                  /**< p by p */
  SS_PARAM_COV_STORAGE,          /**< int: a matrix storage, as all named so */
  SS_PARAM_COR,                  /**< p by p */
  SS_PARAM_COR_STORAGE,          /**< int */
  SS_PARAM_ACCUMULATED_WEIGHTS,  /**< 2: sums of weights and of their squares so far */
  SS_PARAM_QUANT_ORDER_COUNT,    /**< int: q */
  SS_PARAM_QUANT_ORDERS,         /**< q in [0, 1] */
  SS_PARAM_QUANTILES,            /**< q for each selected variable */
  SS_PARAM_ORDER_STATS,          /**< n for each selected variable */
  SS_PARAM_GROUP_INDICES,        /**< int: n, the group of each observation, from 0 */
  SS_PARAM_POOLED_COV_STORAGE,   /**< int */
  SS_PARAM_POOLED_MEAN,          /**< p */
  SS_PARAM_POOLED_COV,           /**< p by p */
  SS_PARAM_GROUP_OUTPUT_INDICES, /**< int: 1 for each group whose estimates are wanted, or 0 */
  SS_PARAM_GROUP_MEANS,          /**< p for each wanted group */
  SS_PARAM_GROUP_COV_STORAGE,    /**< int */
  SS_PARAM_GROUP_COV,            /**< a matrix for each wanted group */
  SS_PARAM_ROBUST_COV_STORAGE,   /**< int */
  SS_PARAM_ROBUST_PARAM_COUNT,   /**< int: 4 */
  SS_PARAM_ROBUST_PARAMS,        /**< 4, see _zokdSSRobustCovariance; without them the defaults */
  SS_PARAM_ROBUST_COV,           /**< p by p */
  SS_PARAM_ROBUST_MEAN,          /**< p */
  SS_PARAM_OUTLIER_PARAM_COUNT,  /**< int */
  SS_PARAM_OUTLIER_PARAMS,       /**< 3: start method, alpha, accuracy */
  SS_PARAM_OUTLIER_WEIGHTS,      /**< n: the result */
  SS_PARAM_ORDER_STATS_STORAGE,  /**< int: SS_ROWS or SS_COLUMNS */
  SS_PARAM_PARTIAL_INDEX_ARRAY,  /**< int: p; -1 given, 1 of interest, else no part */
  SS_PARAM_PARTIAL_COV,          /**< a matrix of the variables of interest */
  SS_PARAM_PARTIAL_COV_STORAGE,  /**< int */
  SS_PARAM_PARTIAL_COR,
  SS_PARAM_PARTIAL_COR_STORAGE, /**< int */
  SS_PARAM_MISSING_PARAM_COUNT, /**< int */
  SS_PARAM_MISSING_PARAMS,
  SS_PARAM_INIT_ESTIMATES_COUNT, /**< int */
  SS_PARAM_INIT_ESTIMATES,
  SS_PARAM_SIMULATED_COUNT, /**< int */
  SS_PARAM_SIMULATED_VALUES,
  SS_PARAM_ESTIMATES_COUNT, /**< int */
  SS_PARAM_ESTIMATES,
  SS_PARAM_PRIOR_COUNT, /**< int */
  SS_PARAM_PRIOR,
  SS_PARAM_PARAMETRIZED_COR,         /**< p by p */
  SS_PARAM_PARAMETRIZED_COR_STORAGE, /**< int */
  SS_PARAM_STREAM_PARAM_COUNT,       /**< int */
  SS_PARAM_STREAM_PARAMS,
  SS_PARAM_STREAM_ORDER_COUNT, /**< int */
  SS_PARAM_STREAM_ORDERS,
  SS_PARAM_STREAM_QUANTILES
};

typedef struct SSTask SSTask;

/** The record behind a task. Integers and floats are the caller's, of the width and precision that
 *  the task was made for. */
struct SSTask {
  int32_t int_is_64;    /**< integers are 64 bits wide */
  int32_t creation_tag; /**< 2 */
  int32_t is_double;    /**< 1 from the d constructor, 0 from the s one */
  const void* dimension;
  const void* observation_count;
  const void* variable_mask;
  const void* observations;
  const void* weights;
  void* accumulated_weights;
  const void* observation_storage;
  void* parametrized_cor;
  const void* parametrized_cor_storage;
  void *mean, *raw_moment_2, *raw_moment_3, *raw_moment_4;
  void *central_moment_2, *central_moment_3, *central_moment_4;
  void *kurtosis, *skewness, *variation;
  void *minimum, *maximum;
  const void* cov_storage;
  void* cov;
  const void* cor_storage;
  void* cor;
  const void* group_indices;
  const void* group_output_indices;
  void *group_means, *group_cov;
  const void* group_cov_storage;
  void *pooled_mean, *pooled_cov;
  const void* pooled_cov_storage;
  const void* quant_order_count;
  const void* quant_orders;
  void* quantiles;
  void* order_stats;
  const void* order_stats_storage;
  const void* stream_order_count;
  const void* stream_orders;
  void* stream_quantiles;
  void* stream_state; /**< the library's own */
  const void* stream_param_count;
  const void* stream_params;
  const void* robust_param_count;
  const void* robust_params;
  void *robust_cov, *robust_mean;
  const void* robust_cov_storage;
  const void* outlier_param_count;
  const void* outlier_params;
  void* outlier_weights;
  const void* partial_index_array;
  void* partial_cov;
  const void* partial_cov_storage;
  void* partial_cor;
  const void* partial_cor_storage;
  const void *missing_param_count, *missing_params;
  const void *init_estimates_count, *init_estimates;
  const void *prior_count, *prior;
  const void* simulated_count;
  void* simulated_values;
  const void* estimates_count;
  void* estimates;
  void* mahalanobis_block[8]; /**< what _zokdSSMahDistance reads */
  int32_t cleanup_count;
  void (*cleanup_hooks[1])(SSTask* task); /**< called when the task is deleted */
};

/** A piece of work: (item, thread, thread count, arguments). Threads count from 0. */
typedef void (*SSItemFunction)(int32_t item, int32_t thread, int32_t threads, void* args);

/** The threads of a compute entry. The library starts none: it asks this table, which the caller
 *  supplies. A thread count of 0 leaves the choice to the table. */
typedef struct SSThreadServices {
  /** Runs function(i, thread, threads, args) once for each i below `items`, and waits. */
  void (*run_items)(int32_t items, int32_t threads, void* args, SSItemFunction function);
  /** The same, items started in ascending order, so that run_in_order may be called from them. */
  void (*run_ascending)(int32_t items, int32_t threads, void* args, SSItemFunction function);
  /** Runs function(t, 0, threads, args) once on each of `threads` threads, and waits. */
  void (*run_threads)(int32_t threads, void* args, SSItemFunction function);
  /** From inside an item of run_ascending: runs function(item, thread, threads, args) when the
   *  function has returned for all items below, one caller at a time. */
  void (*run_in_order)(int32_t item, int32_t thread, int32_t threads, void* args,
                       SSItemFunction function);
  /** The largest usable number of threads, at least 1. */
  int32_t (*max_threads)(void);
} SSThreadServices;

/** Makes a task of p variables and n observations x, with weights or 0, and a mask of variables
 *  (indices) or 0. p, n, x_storage and indices are addresses of integers. Without x neither n nor
 *  x_storage is looked at. Fails with SS_BAD_DIMENSION, SS_NULL_STORAGE, SS_BAD_STORAGE,
 *  SS_BAD_OBSERVATION_COUNT or SS_NO_MEMORY, in this order. */
ORV_API int32_t __zokdSSNewTask(SSTask** task, const void* p, const void* n, const void* x_storage,
                                const double* x, const double* weights, const void* indices,
                                int32_t int_is_64);
ORV_API int32_t __zoksSSNewTask(SSTask** task, const void* p, const void* n, const void* x_storage,
                                const float* x, const float* weights, const void* indices,
                                int32_t int_is_64);

/** Deletes the task and leaves 0 in its place, so that a second deletion does nothing and returns
 *  SS_OK, too. SS_NULL_TASK where there is no place. */
ORV_API int32_t __zokSSDeleteTask(SSTask** task);

/** Sets one field to `array`. Inputs and results alike: the library writes only to results.
 *  SS_NULL_TASK; SS_BAD_PARAMETER; for a null array a code of its own for each parameter. */
ORV_API int32_t __zokdSSEditTask(SSTask* task, int64_t parameter, const double* array);
ORV_API int32_t __zoksSSEditTask(SSTask* task, int64_t parameter, const float* array);
ORV_API int32_t __zokiSSEditTask(SSTask* task, int64_t parameter, const void* array);

/* Grouped editors. Each sets the fields of its arguments' names; a null argument leaves its field
 * as it was. SS_NULL_TASK is the only failure. */

ORV_API int32_t __zokdSSEditMoments(SSTask* task, double* mean, double* raw_moment_2,
                                    double* raw_moment_3, double* raw_moment_4,
                                    double* central_moment_2, double* central_moment_3,
                                    double* central_moment_4);
ORV_API int32_t __zoksSSEditMoments(SSTask* task, float* mean, float* raw_moment_2,
                                    float* raw_moment_3, float* raw_moment_4,
                                    float* central_moment_2, float* central_moment_3,
                                    float* central_moment_4);

ORV_API int32_t __zokdSSEditCovCor(SSTask* task, double* mean, double* cov, const void* cov_storage,
                                   double* cor, const void* cor_storage);
ORV_API int32_t __zoksSSEditCovCor(SSTask* task, float* mean, float* cov, const void* cov_storage,
                                   float* cor, const void* cor_storage);

ORV_API int32_t __zokdSSEditPartialCovCor(SSTask* task, const void* partial_index_array,
                                          double* cov, const void* cov_storage, double* cor,
                                          const void* cor_storage, double* partial_cov,
                                          const void* partial_cov_storage, double* partial_cor,
                                          const void* partial_cor_storage);
ORV_API int32_t __zoksSSEditPartialCovCor(SSTask* task, const void* partial_index_array, float* cov,
                                          const void* cov_storage, float* cor,
                                          const void* cor_storage, float* partial_cov,
                                          const void* partial_cov_storage, float* partial_cor,
                                          const void* partial_cor_storage);

ORV_API int32_t __zokdSSEditQuantiles(SSTask* task, const void* quant_order_count,
                                      const double* quant_orders, double* quantiles,
                                      double* order_stats, const void* order_stats_storage);
ORV_API int32_t __zoksSSEditQuantiles(SSTask* task, const void* quant_order_count,
                                      const float* quant_orders, float* quantiles,
                                      float* order_stats, const void* order_stats_storage);

ORV_API int32_t __zokdSSEditStreamQuantiles(SSTask* task, const void* stream_order_count,
                                            const double* stream_orders, double* stream_quantiles,
                                            const void* stream_param_count,
                                            const double* stream_params);
ORV_API int32_t __zoksSSEditStreamQuantiles(SSTask* task, const void* stream_order_count,
                                            const float* stream_orders, float* stream_quantiles,
                                            const void* stream_param_count,
                                            const float* stream_params);

/** The storage of both matrices is set by __zokiSSEditTask. */
ORV_API int32_t __zokdSSEditPooledCovariance(SSTask* task, const void* group_indices,
                                             double* pooled_mean, double* pooled_cov,
                                             const void* group_output_indices, double* group_means,
                                             double* group_cov);
ORV_API int32_t __zoksSSEditPooledCovariance(SSTask* task, const void* group_indices,
                                             float* pooled_mean, float* pooled_cov,
                                             const void* group_output_indices, float* group_means,
                                             float* group_cov);

ORV_API int32_t __zokdSSEditMissingVals(SSTask* task, const void* missing_param_count,
                                        const double* missing_params,
                                        const void* init_estimates_count,
                                        const double* init_estimates, const void* prior_count,
                                        const double* prior, const void* simulated_count,
                                        double* simulated_values, const void* estimates_count,
                                        double* estimates);
ORV_API int32_t __zoksSSEditMissingVals(SSTask* task, const void* missing_param_count,
                                        const float* missing_params,
                                        const void* init_estimates_count,
                                        const float* init_estimates, const void* prior_count,
                                        const float* prior, const void* simulated_count,
                                        float* simulated_values, const void* estimates_count,
                                        float* estimates);

ORV_API int32_t __zokdSSEditOutDetect(SSTask* task, const void* outlier_param_count,
                                      const double* outlier_params, double* outlier_weights);
ORV_API int32_t __zoksSSEditOutDetect(SSTask* task, const void* outlier_param_count,
                                      const float* outlier_params, float* outlier_weights);

ORV_API int32_t __zokdSSEditRCov(SSTask* task, const void* robust_cov_storage,
                                 const void* robust_param_count, const double* robust_params,
                                 double* robust_cov, double* robust_mean);
ORV_API int32_t __zoksSSEditRCov(SSTask* task, const void* robust_cov_storage,
                                 const void* robust_param_count, const float* robust_params,
                                 float* robust_cov, float* robust_mean);

ORV_API int32_t __zokdSSEditMtxParametrz(SSTask* task, double* cor, const void* cor_storage,
                                         double* parametrized_cor,
                                         const void* parametrized_cor_storage);
ORV_API int32_t __zoksSSEditMtxParametrz(SSTask* task, float* cor, const void* cor_storage,
                                         float* parametrized_cor,
                                         const void* parametrized_cor_storage);

/* Compute entries: (task, SS_EST_... bits, SS_METHOD_... bit, threads).
 *
 * When an entry has found all else that it looks for, it looks at the sizes of the data:
 * SS_BAD_DIMENSION or SS_BAD_OBSERVATION_COUNT for numbers below 1 or beyond what memory holds, and
 * for quantiles beyond 2^31 - 1; SS_NULL_OBSERVATIONS. The task itself must be there.
 *
 * An element's result has the same bits for every layout, mask, storage and word size, and whatever
 * other variables there are. Where matrix routines of BLAS and LAPACK are used, in _zokdSSBasic
 * with SS_METHOD_FAST, in _zokdSSPartialCovariance and _zokdSSRobustCovariance, the last bits of
 * covariances and correlations are those of the routines that the processor gets, and are not
 * promised. */

/** Moments, covariance and correlation, in one traversal: running weighted means (updates after
 *  West 1979) and a scatter matrix, by the same updates with SS_METHOD_ONE_PASS or by matrix
 *  routines with SS_METHOD_FAST, which is faster for many variables and loses digits where the mean
 *  is large beside the deviation. With `accumulated_weights` set, results go on from block to
 * block: {0, 0} there begins anew. Threads get at least 1000 observations each and are merged after
 *  Chan, Golub and LeVeque (1979): the last bits depend on the number of shares, which max_threads
 *  tells (orv_threads_reproducible() always tells the same).
 *  Ratios of moments, and the products under a correlation's root, are formed in doubles for floats
 *  too, and leave the range only where the moments themselves do. A correlation that can't be
 * formed, since a variable has not varied, is NaN; a call that goes on from one alone takes it as
 * no scatter. Data in rows of 2^31 observations and more are updated, with SS_METHOD_FAST too.
 *  Fails with SS_BAD_STORAGE, the code of the first missing result, SS_BAD_METHOD, SS_NO_MEMORY. */
ORV_API int32_t _zokdSSBasic(SSTask* task, uint64_t estimates, uint64_t method,
                             const SSThreadServices* services);
ORV_API int32_t _zoksSSBasic(SSTask* task, uint64_t estimates, uint64_t method,
                             const SSThreadServices* services);

/** Least and largest value of each variable, beginning with what the results hold: set them first,
 *  for instance to the first observation. A NaN in the data is passed over. */
ORV_API int32_t _zokdSSMinmax(SSTask* task, uint64_t estimates, uint64_t method,
                              const SSThreadServices* services);
ORV_API int32_t _zoksSSMinmax(SSTask* task, uint64_t estimates, uint64_t method,
                              const SSThreadServices* services);

/** Quantiles and sorted data of each variable. The quantile of order q lies at (n - 1) q of the
 *  sorted data, between its neighbours in proportion (definition 7 of Hyndman and Fan 1996); one
 *  that falls on an element is that element, whatever its neighbours. Weights are not looked at.
 *  Results of the selected variables stand one after another. Without memory for the work nothing
 *  is computed, and the status is SS_OK all the same. */
ORV_API int32_t _zokdSSQuantiles(SSTask* task, uint64_t estimates, uint64_t method,
                                 const SSThreadServices* services);
ORV_API int32_t _zoksSSQuantiles(SSTask* task, uint64_t estimates, uint64_t method,
                                 const SSThreadServices* services);

/** The weighted quantile of each variable, of the task's first order only. Checks nothing
 *  but the sizes. */
ORV_API int32_t _zokdSSWMedian(SSTask* task, uint64_t estimates, uint64_t method,
                               const SSThreadServices* services);
ORV_API int32_t _zoksSSWMedian(SSTask* task, uint64_t estimates, uint64_t method,
                               const SSThreadServices* services);

/** Means and covariances of groups of observations, and the pooled ones: the groups' scatter over
 *  the sum of their W - W2 / W. Group numbers must be dense from 0. Results don't depend on the
 *  number of threads. */
ORV_API int32_t _zokdSSPooledCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                        const SSThreadServices* services);
ORV_API int32_t _zoksSSPooledCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                        const SSThreadServices* services);

/** Covariance and correlation of the variables of interest, given the conditioning ones:
 *  Cyy - Cyz inv(Czz) Czy, from the task's covariance or, without one, its correlation. */
ORV_API int32_t _zokdSSPartialCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                         const SSThreadServices* services);
ORV_API int32_t _zoksSSPartialCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                         const SSThreadServices* services);

/** Mean and covariance of data that hold outliers, in `robust_mean` and `robust_cov`: of more than
 *  2 p observations, p at most 40000. Weights and mask are not looked at; data must be finite.
 *
 *  The start is the orthogonalised Gnanadesikan-Kettenring estimate (Gnanadesikan and Kettenring
 *  1972; R. A. Maronna and R. H. Zamar 2002) with the scale of V. J. Yohai and R. H. Zamar (1988),
 *  re-weighted once: mean and covariance, over their number, of the observations whose distance is
 *  below the chi-square quantile 0.9, relative to their median. From there the S-estimator with the
 *  translated biweight (D. M. Rocke 1996) iterates. Up to four `robust_params`, taken if there are
 *  exactly four; what is out of its range, in parentheses, is the default:
 *
 *    0  breakdown point, the part of outliers that it withstands (above 0, at most (n - p)/(2 n)):
 *       (n - p)/(2 n)
 *    1  asymptotic rejection probability, the part of normal data that gets no weight (above 0,
 *       below 1): 0.001
 *    2  accuracy (above 0): it ends when the square of the mean's way is not above it, 0.001. It
 *       has the unit of the data: scale variables to about 1 first, or set it
 *    3  most iterations, truncated (from 0): 100. With 0 the start is the result; to reach it is
 *       no error
 *
 *  Not every breakdown point goes with every rejection probability: the defaults don't for up to 4
 *  variables, nor for 30 and more. Then what is beyond the root of the chi-square quantile 1 -
 *  rejection has no weight, and all else its full weight.
 *
 *  A variable of robust scale 0, more than half of whose values are equal, adds nothing to the
 *  start's distances. Takes room for a copy of the data, and for 4 n numbers for each thread while
 *  3 n of each fit into 10000000 bytes. Last bits depend on the number of threads that max_threads
 *  tells, and are those of BLAS and LAPACK.
 *
 *  Fails with, in this order: SS_BAD_DIMENSION; SS_NULL_OBSERVATIONS, n not above 2 p;
 *  SS_NULL_STORAGE, SS_BAD_STORAGE for the observations; SS_NULL_ROBUST_COV; SS_NULL_ROBUST_MEAN;
 *  SS_NULL_STORAGE, SS_BAD_STORAGE for the result; SS_BAD_METHOD; SS_NO_MEMORY; SS_OGK_FAILED, for
 *  data that are not finite as well; SS_NO_POSITIVE_EIGENVALUE, SS_EIGENVALUES_FAILED,
 *  SS_NOT_POSITIVE_DEFINITE or SS_SINGULAR for an estimate that has no inverse; SS_NOT_CONVERGED
 *  where all weights are 0. Results are not complete then. */
ORV_API int32_t _zokdSSRobustCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                        const SSThreadServices* services);
ORV_API int32_t _zoksSSRobustCovariance(SSTask* task, uint64_t estimates, uint64_t method,
                                        const SSThreadServices* services);

/** Outliers by BACON (N. Billor, A. S. Hadi, P. F. Velleman 2000), for p variables and n of 5 p or
 *  more observations. The 5 p nearest to a centre are the first good ones; then, again and again,
 *  those whose Mahalanobis distance from the good ones' mean, by their covariance, is below
 *
 *      (c_hr + c_np) sqrt(quantile of order 1 - alpha of the chi-square distribution of p)
 *
 *  with c_np = 1 + (p + 1)/(n - p) + 2/(n - 1 - 3 p), and c_hr = max(0, (h - r)/(h + r)) for r good
 *  ones and h = (n + p + 1)/2, till their number changes by less than an accuracy or is n. Results
 *  go to outlier_weights, n numbers: 0 for an outlier, else the observation's weight, which is 1
 *  without weights. An observation that is not finite is an outlier and has no part in anything.
 *
 *  outlier_params, if their count is 3 (else all have the default, as has one that is not allowed):
 *    0  the centre: 2 the variables' medians (default), from which distances are Euclidean, or 1
 *       the mean, in the measure of the covariance of all, which outliers carry away
 *    1  alpha, from 0 to 1, by default 0.05. This is for single observations: at 0.05 some 12 % of
 *       1000 clean normal ones of 2 variables, and 7 % of 10, are called outliers. The method's
 *       authors take alpha / n, by which clean data have any in alpha of all cases.
 *    2  the accuracy, above 0, by default 0.005
 *
 *  Fails with SS_BAD_DIMENSION, SS_BAD_OBSERVATION_COUNT, SS_BAD_STORAGE, SS_NULL_OUTLIER_WEIGHTS,
 *  SS_BAD_METHOD, SS_NULL_OBSERVATIONS; SS_NO_MEMORY; the statuses of __zokdTestCovRank and
 *  __zokdInvCov for a covariance; SS_NOT_CONVERGED where no more than 5 p good ones (and not all)
 *  were left, or their number did not settle within 100 rounds. Takes no mask of variables. */
ORV_API int32_t _zokdSSOutliersDetection(SSTask* task, uint64_t estimates, uint64_t method,
                                         const SSThreadServices* services);
ORV_API int32_t _zoksSSOutliersDetection(SSTask* task, uint64_t estimates, uint64_t method,
                                         const SSThreadServices* services);

/** Makes a matrix of correlations positive definite (R. Rebonato, P. Jaeckel 1999): eigenvalues
 *  below 1e-14, for floats 1e-6, are raised to that, and what eigenvectors and eigenvalues then
 *  make is scaled to a unit diagonal. From cor to parametrized_cor, which may be the same array
 *  unless only the latter is full. The diagonal of cor is taken for 1; a matrix whose eigenvalues
 *  are large enough stays as it is. Reads p, both matrices and their storage, in this order:
 *  SS_BAD_DIMENSION; SS_NULL_COR, SS_NULL_STORAGE, SS_BAD_STORAGE; SS_NULL_PARAMETRIZED_COR,
 *  SS_NULL_STORAGE, SS_BAD_STORAGE; SS_BAD_METHOD; SS_NO_MEMORY; SS_SPECTRUM_FAILED;
 *  SS_NOT_POSITIVE for one that is not finite. LAPACK: the last bits are not promised. */
ORV_API int32_t _zokdSSCorParametrization(SSTask* task, uint64_t estimates, uint64_t method,
                                          const SSThreadServices* services);
ORV_API int32_t _zoksSSCorParametrization(SSTask* task, uint64_t estimates, uint64_t method,
                                          const SSThreadServices* services);

/** Mahalanobis distances (1936): roots of (x - m)' A (x - m). Besides the data it reads the eight
 *  words of mahalanobis_block, which no editor sets. They are addresses of
 *
 *    0, 1  the first observation's number and the end of the range (integers)
 *    2     the mean m
 *    3     the inverse covariance A, p by p; its upper triangle by columns is read, the way
 *          __zokdInvCov leaves it
 *    4     the result: a distance for each observation of the range
 *    6, 7  a buffer and the number of its elements (integer), or 0
 *
 *  and word 5 is not read. With a buffer, for some tens of observations and as much again, it is
 *  about twice as fast, by a matrix routine whose last bits are not promised. A NaN in an
 *  observation is one in its distance. Returns SS_OK, or SS_NO_MEMORY for more than 1024 variables
 *  without a buffer. Nothing is kept: threads may call with records of their own. */
ORV_API int32_t _zokdSSMahDistance(SSTask* task);
ORV_API int32_t _zoksSSMahDistance(SSTask* task);

/** Quantiles of a stream that is fed block by block and not kept. Each call adds the task's n
 *  observations (none for n = 0); with SS_METHOD_STREAM_QUERY it then answers the stream_orders
 *  from all that was added so far, with SS_METHOD_STREAM_ADD alone it writes nothing.
 *  stream_params holds one number, epsilon, above 0 and up to 1: a value whose rank is within
 *  epsilon N of q N, or less than 1 away, answers order q, N being the number of values so far.
 *  All answers are values of the data, and how the stream is cut into calls, and the number of
 *  threads, change none. Before the first value stream_quantiles stays as it was. Answers of the
 *  selected variables stand one after another.
 *
 *  Segments of the stream, each twice as long as the one before, are summarised one by one
 *  (Zhang and Wang 2007) in about (1 / epsilon) log2(epsilon N)^2 tuples of 24 bytes at most,
 *  taken as they are needed; while N is below 2 / epsilon, all values are kept and answers are
 *  exact. An epsilon that is changed holds for the segments from then on. The summary is kept
 *  with the task and ends with it; p may not change meanwhile, nor a mask select what the first
 *  one left out (SS_BAD_MASK). A NaN in a variable spoils its answers. After SS_NO_MEMORY part
 *  of the block has been added. */
ORV_API int32_t _zokdSSStreamQuantiles(SSTask* task, uint64_t estimates, uint64_t method,
                                       const SSThreadServices* services);
ORV_API int32_t _zoksSSStreamQuantiles(SSTask* task, uint64_t estimates, uint64_t method,
                                       const SSThreadServices* services);

/** A missing value is a quiet NaN with its sign bit set; any other NaN is a value, and spoils
 *  what it takes part in. A NaN as C makes it is positive, so that data need these. */
static inline double orv_missing_d(void) {
  const uint64_t bits = 0xFFF8000000000000u;
  double x;
  memcpy(&x, &bits, sizeof x);
  return x;
}
static inline float orv_missing_s(void) {
  const uint32_t bits = 0xFFC00000u;
  float x;
  memcpy(&x, &bits, sizeof x);
  return x;
}

/** Multiple imputation (Rubin 1987) of values missing at random, under a multivariate normal
 *  law: mean and covariance by EM (Dempster, Laird and Rubin 1977), then for each imputation a
 *  chain of data augmentation (Tanner and Wong 1987; Schafer 1997), which draws missing values
 *  and parameters in turn. The data are left as they are; weights and mask are not looked at.
 *
 *  missing_params: 5 numbers. EM iterations at most (50 where below 1), iterations of a chain
 *  (30 where below 1), the largest change of any mean or covariance with which EM ends (0.001
 *  where not above 0), the number m of imputations, and how many values are missing.
 *  init_estimates: where EM begins, p means and the upper triangle of a covariance, packed row
 *  by row. Ignored with a count other than p (p + 3) / 2: then it begins with mean 0 and a unit
 *  covariance.
 *  prior: p means mu, a weight tau (0 where below), degrees of freedom nu (p where below), a
 *  packed scale matrix, of the normal-inverse-Wishart law of mean and covariance. Ignored with a
 *  count below (p (p + 3) + 4) / 2: then the density is proportional to |C|^(-(p + 1) / 2).
 *  simulated_values: for each imputation the missing values in the order of the data's storage.
 *  estimates: for each iteration of each chain the drawn mean and packed covariance.
 *  One of these two must be asked for; a count of 0 asks for no values.
 *
 *  Scale the variables first where a change of 0.001 is not small beside their variances, and
 *  give EM more iterations where much is missing. The same task gives the same imputations, on
 *  the same kind of processor; the stream is MCG59's. Works in doubles on a copy of the data,
 *  and of p (p + 1) products for patterns of missing values that more than p / 2 observations
 *  have.
 *
 *  Fails with SS_BAD_DIMENSION, SS_BAD_STORAGE, SS_NULL_MISSING_PARAMS,
 *  SS_NULL_MISSING_PARAM_COUNT, SS_BAD_MISSING_PARAM_COUNT, SS_NULL_SIMULATED_COUNT,
 *  SS_NULL_SIMULATED_VALUES, SS_NOTHING_ASKED, SS_BAD_METHOD, SS_BAD_MISSING_COUNT,
 *  SS_BAD_MISSING_PARAMS, SS_BAD_SIMULATED_COUNT, SS_BAD_ESTIMATES_COUNT, SS_NO_MEMORY,
 *  SS_CONDITIONAL_NOT_POSITIVE, SS_IMPUTATION_FAILED, SS_POSTERIOR_FAILED, in this order. */
ORV_API int32_t _zokdSSMissingValues(SSTask* task, uint64_t estimates, uint64_t method,
                                     const SSThreadServices* services);
ORV_API int32_t _zoksSSMissingValues(SSTask* task, uint64_t estimates, uint64_t method,
                                     const SSThreadServices* services);

/** The same with numbers from a stream of the caller's (orv/zok.h), which moves on. */
struct StreamState;
ORV_API int32_t _zokdSSMissingValuesFrom(SSTask* task, struct StreamState* stream);
ORV_API int32_t _zoksSSMissingValuesFrom(SSTask* task, struct StreamState* stream);

/** The EM estimate alone: p means and the packed covariance, of divisor n, in `moments`;
 *  *iterations tells how many there were. Takes observations, init_estimates and the first and
 *  third of missing_params, and needs no value to be missing. */
ORV_API int32_t _zokdSSMissingMoments(SSTask* task, double* moments, int32_t* iterations);
ORV_API int32_t _zoksSSMissingMoments(SSTask* task, float* moments, int32_t* iterations);

#ifdef __cplusplus
}
#endif

#endif
