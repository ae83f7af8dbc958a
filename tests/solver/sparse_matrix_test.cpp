#include "solver/build_matrix.h"
#include "solver/solve_matrix.h"
#include "solver/sparse_matrix.h"
#include "tests/support/network_builder.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(SparseMatrix, ElementsKeepColumnOrderAndZerosCreateNothing) {
    SparseMatrix matrix;
    matrix.Reserve(3, 10);
    matrix.SetElement(1, 3, 3.0);
    matrix.SetElement(1, 1, 1.0);
    matrix.SetElement(1, 2, 0.0); // a zero never creates an element
    EXPECT_EQ(matrix.ElementCount(), 2);
    matrix.SetElement(1, 2, 2.0);
    std::vector<int> columns;
    for (int at = matrix.RowHead(1); at != 0; at = matrix.Element(at).Next) {
        columns.push_back(matrix.Element(at).Column);
    }
    EXPECT_EQ(columns, (std::vector<int>{1, 2, 3}));
    matrix.SetElement(1, 2, 0.0); // an existing element is overwritten by 0 and stays
    EXPECT_EQ(matrix.ElementCount(), 3);
    EXPECT_EQ(matrix.GetElement(1, 2), 0.0);
    EXPECT_EQ(matrix.GetElement(1, 3), 3.0);
    EXPECT_EQ(matrix.GetElement(2, 1), 0.0);
    matrix.Clear(3);
    EXPECT_EQ(matrix.RowHead(1), 0);
    EXPECT_EQ(matrix.ElementCount(), 0);
}

struct Fixture : testing::SolverHarness {
    // A dense system as sparse rows, the right side in the column after the last.
    void Load(const std::vector<std::vector<double>>& a, const std::vector<double>& b) {
        const int n = static_cast<int>(b.size());
        State.Matrix.Reserve(n + 2, 1000);
        State.Matrix.Clear(n + 1);
        State.Edges.DistinctNodes = n;
        State.EquationExtra = 0;
        State.RowCount = n;
        State.Correction.assign(static_cast<std::size_t>(n) + 3, 0.0);
        for (int i = 1; i <= n; ++i) {
            for (int j = 1; j <= n; ++j) {
                State.Matrix.SetElement(
                    i, j, a[static_cast<std::size_t>(i - 1)][static_cast<std::size_t>(j - 1)]);
            }
            State.Matrix.SetElement(i, n + 1, b[static_cast<std::size_t>(i - 1)]);
        }
        State.Options.UseMaximumTest = true;
        State.Options.Tolerance = 0.001;
    }
};

TEST(SolveMatrix, EliminationWithFillInMatchesTheDenseSolution) {
    // A sparse, diagonally dominant system like the node equations, in an order that fills in.
    std::mt19937 random(7);
    std::uniform_real_distribution<double> slope(0.5, 50);
    const int n = 40;
    std::vector<std::vector<double>> a(n, std::vector<double>(n, 0.0));
    auto join = [&](int i, int j) {
        const double s = slope(random);
        a[static_cast<std::size_t>(i)][static_cast<std::size_t>(i)] += s;
        a[static_cast<std::size_t>(j)][static_cast<std::size_t>(j)] += s;
        a[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = -s;
        a[static_cast<std::size_t>(j)][static_cast<std::size_t>(i)] = -s;
    };
    for (int i = 1; i < n; ++i) {
        join(i - 1, i);
        join(0, i); // a hub that fills the whole matrix in
        join(i, (i * 7) % n == i ? 0 : (i * 7) % n);
    }
    for (int i = 0; i < n; ++i) {
        a[static_cast<std::size_t>(i)][static_cast<std::size_t>(i)] += 1.0;
    }
    std::vector<double> x(n), b(n, 0.0);
    for (int i = 0; i < n; ++i) {
        x[static_cast<std::size_t>(i)] = std::sin(i + 1.0);
    }
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            b[static_cast<std::size_t>(i)] +=
                a[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] *
                x[static_cast<std::size_t>(j)];
        }
    }
    Fixture fixture;
    fixture.Load(a, b);
    ASSERT_EQ(SolveMatrix(fixture.Context, fixture.State), MatrixOutcome::Solved);
    for (int i = 1; i <= n; ++i) {
        EXPECT_NEAR(fixture.State.Correction[static_cast<std::size_t>(i)],
                    x[static_cast<std::size_t>(i - 1)], 1e-9);
    }
    EXPECT_EQ(fixture.State.NotConverged, 1);
    EXPECT_NEAR(fixture.State.MaximumImbalance, 1.0, 1e-3);
}

TEST(SolveMatrix, ConvergenceTestsAndRounding) {
    Fixture fixture;
    fixture.Load({{2, -1}, {-1, 2}}, {0.0002, 0.0002});
    ASSERT_EQ(SolveMatrix(fixture.Context, fixture.State), MatrixOutcome::Solved);
    EXPECT_NEAR(fixture.State.Correction[1], 0.0002, 1e-15);
    EXPECT_EQ(fixture.State.NotConverged, 0);
    EXPECT_EQ(fixture.State.MaximumImbalance, 0.0002); // through "#0.000000"
    fixture.Load({{2, -1}, {-1, 2}}, {0.0000012, 0.0000012});
    fixture.State.Options.Tolerance = 0.000001;
    ASSERT_EQ(SolveMatrix(fixture.Context, fixture.State), MatrixOutcome::Solved);
    EXPECT_EQ(fixture.State.NotConverged, 1);
    EXPECT_EQ(fixture.State.MaximumImbalance, 0.000001);
}

TEST(SolveMatrix, AZeroPivotMayRestartOnceThenFails) {
    // A node whose one pipe has no slope and which has no outflow: its row is empty.
    Fixture fixture;
    fixture.Load({{1, 0, 0}, {0, 0, 0}, {0, 0, 1}}, {1, 0, 1});
    fixture.State.Gauge = 30;
    EXPECT_EQ(SolveMatrix(fixture.Context, fixture.State), MatrixOutcome::ZeroPivot);
    EXPECT_TRUE(fixture.Context.Diagnostics.empty());
    fixture.Load({{1, 0, 0}, {0, 0, 0}, {0, 0, 1}}, {1, 0, 1});
    EXPECT_EQ(SolveMatrix(fixture.Context, fixture.State), MatrixOutcome::Failed);
    EXPECT_TRUE(fixture.Dialogs.Empty()); // recorded for the run's loop to show
    ASSERT_EQ(fixture.Context.Diagnostics.size(), 1u);
    EXPECT_EQ(fixture.Context.Diagnostics[0].Text, "No Solution.  Check data for discontinuities.");
    EXPECT_EQ(fixture.Context.AbortFlag, 1);
    // After the first solution the recovery is not tried.
    Fixture later;
    later.Load({{1, 0, 0}, {0, 0, 0}, {0, 0, 1}}, {1, 0, 1});
    later.State.Gauge = 50;
    EXPECT_EQ(SolveMatrix(later.Context, later.State), MatrixOutcome::Failed);
}

TEST(SolveMatrix, APivotNeedNotStandOnTheDiagonal) {
    // Row 1 has no element in column 1: the first element it has serves as the pivot.
    Fixture fixture;
    fixture.Load({{0, 2}, {0, 3}}, {4, 6});
    EXPECT_EQ(SolveMatrix(fixture.Context, fixture.State), MatrixOutcome::Solved);
    EXPECT_TRUE(fixture.Dialogs.Empty());
}

TEST(SolveMatrix, ARowWithItsDiagonalAloneHasARightSideOfZero) {
    Fixture fixture;
    fixture.Load({{4, 0}, {0, 5}}, {8, 0});
    ASSERT_EQ(SolveMatrix(fixture.Context, fixture.State), MatrixOutcome::Solved);
    EXPECT_EQ(fixture.State.Correction[1], 2.0);
    EXPECT_EQ(fixture.State.Correction[2], 0.0);
}

TEST(SolveMatrix, ProgressPercent) {
    EXPECT_EQ(ProgressPercentText(0.5, 0.001, 2000), "50.05%");
    EXPECT_EQ(ProgressPercentText(0.5, 0.001, 10), "0.00%");
    EXPECT_EQ(ProgressPercentText(5, 0.001, 2000), "0.00%");
}

} // namespace
} // namespace quench
