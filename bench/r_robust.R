#!/usr/bin/env Rscript
# SPDX-License-Identifier: MIT
# Times robust covariance beside R: covOGK of robustbase and CovSest of rrcov, on tables made as
# those of bench_statistics.cpp are.
#
#   Rscript bench/r_robust.R build/x86-64/bin/orv_bench_statistics [--long]
#
# Prints nanoseconds an element on one thread, the least of several runs that take turns, and our
# time over R's. It is processor time, which other programs on the machine hardly change. Without
# --long tables of 50 columns have as many rows as R does in some seconds; ours always has 10^5.
Sys.setenv(OMP_NUM_THREADS = "1", OPENBLAS_NUM_THREADS = "1")
suppressMessages({
  library(robustbase)
  library(rrcov)
})

arguments <- commandArgs(trailingOnly = TRUE)
long <- "--long" %in% arguments
program <- setdiff(arguments, "--long")
if (length(program) != 1 || !file.exists(program)) {
  stop("which program? build/x86-64/bin/orv_bench_statistics, for instance", call. = FALSE)
}

contaminated <- function(n, p) {
  common <- 0.5 * rnorm(n) + ifelse(seq_len(n) %% 10 == 1, 8, 0)
  matrix(rnorm(n * p), n) + common
}

ours <- function(name) {
  lines <- system2(program, c(paste0("--benchmark_filter=^ours/", name, "/"),
    "--benchmark_format=csv"), stdout = TRUE, stderr = FALSE)
  table <- read.csv(text = lines[seq(grep("^name,", lines), length(lines))])
  stopifnot(nrow(table) == 1, table$time_unit == "ms")
  table$cpu_time * 1e6
}

theirs <- function(work, x) {
  gc()
  time <- system.time(work(x))
  sum(time[c("user.self", "sys.self")]) * 1e9
}

compare <- function(label, work, name, n, p, runs) {
  x <- contaminated(n, p)
  rows <- if (p == 10) 1e4 else 1e5
  times <- replicate(runs, c(theirs(work, x) / (n * p),
    ours(paste0(name, "/d/columns/", p, "/1")) / (rows * p)))
  best <- apply(times, 1, min)
  cat(sprintf("%-28s %6d x %-3d  R %10.1f   ours %8.1f   ratio %.4f\n", label, n, p, best[1],
    best[2], best[2] / best[1]))
}

set.seed(1)
cat(sprintf("robustbase %s, rrcov %s; ns an element\n", packageVersion("robustbase"),
  packageVersion("rrcov")))
ogk_once <- function(x) covOGK(x, n.iter = 1, sigmamu = scaleTau2)  # as ours
ogk <- function(x) covOGK(x, sigmamu = scaleTau2)                   # its default, two rounds
s_estimate <- function(x) CovSest(x, method = "bisquare")
compare("covOGK, n.iter = 1", ogk_once, "robust_ogk", 1e4, 10, 5)
compare("covOGK", ogk, "robust_ogk", 1e4, 10, 5)
compare("CovSest", s_estimate, "robust_tbs", 1e4, 10, 3)
compare("covOGK, n.iter = 1", ogk_once, "robust_ogk", if (long) 1e5 else 2e4, 50, 2)
compare("CovSest", s_estimate, "robust_tbs", if (long) 1e5 else 2500, 50, 2)
