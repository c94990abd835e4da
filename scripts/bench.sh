#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# How fast the library, the tool and the simulated driver are, beside what they can be: builds the benchmarks at two levels
# of optimisation, prints one table, and writes it into docs/performance.md.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh bench

figures=build/bench-figures
mkdir -p $figures
for preset in bench-o2 bench; do
  echo "Building $preset ..." >&2
  cmake --preset $preset >/dev/null
  cmake --build --preset $preset --target bench_table -- --quiet
done
for preset in bench-o2 bench; do
  echo "Measuring $preset ..." >&2
  build/$preset/bin/bench_table >$figures/$preset.tsv
done

# Both levels of a row side by side. Its fields: work, unit, aim, figure, verdict, what the figure comes from.
rows() {
  paste $figures/bench-o2.tsv $figures/bench.tsv | awk -F'\t' '
    function figure(value, basis) { return basis == "" ? value : value " (" basis ")" }
    { printf "%s\t%s\t%s\t%s\t%s\t%s\t%s\n", $1, $2, $3, figure($4, $6), $5, figure($10, $12), $11 }'
}

table() {
  { printf 'work\tfigure\taim\t-O2\tverdict\t-O3\tverdict\n'; rows; } | awk -F'\t' '
    { for (i = 1; i <= NF; ++i) { cell[NR, i] = $i; if (length($i) > width[i]) width[i] = length($i) } }
    END {
      for (row = 1; row <= NR; ++row) {
        for (i = 1; i <= NF; ++i) printf "| %-" width[i] "s ", cell[row, i]
        print "|"
        if (row > 1) continue
        for (i = 1; i <= NF; ++i) { rule = sprintf("%" width[i] "s", ""); gsub(/ /, "-", rule); printf "| %s ", rule }
        print "|"
      }
    }'
}

machine() {
  lscpu | awk -F': +' '
    /^Model name/ { model = $2 } /^CPU\(s\)/ { cores = $2 } /^L2 cache/ { l2 = $2 } /^L3 cache/ { l3 = $2 }
    END { printf "%s, %s processors, L2 cache %s, L3 cache %s", model, cores, l2, l3 }'
}

report() {
  echo "Measured on $(date -u +%Y-%m-%d) with \`scripts/bench.sh\`. Machine: $(machine)."
  echo "Compiler: $(c++ --version | head -n 1)."
  echo
  table
}

page=docs/performance.md
report | tee $figures/report.md
awk -v report=$figures/report.md '
  /^<!-- end of the table -->$/ { skip = 0 }
  !skip { print }
  /^<!-- table, written by scripts\/bench.sh -->$/ { skip = 1; while ((getline line < report) > 0) print line }
' $page >$figures/page.md
cp $figures/page.md $page
