#include "calc/skyline_matrix.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <stdexcept>

namespace quench {

namespace {

std::vector<int> ReverseCuthillMcKee(int size, const std::vector<std::vector<int>>& neighbours) {
    std::vector<int> order;
    std::vector<bool> placed(static_cast<std::size_t>(size), false);
    auto degree = [&](int node) { return neighbours[static_cast<std::size_t>(node)].size(); };
    while (static_cast<int>(order.size()) < size) {
        int start = -1;
        for (int node = 0; node < size; ++node) {
            if (!placed[static_cast<std::size_t>(node)] &&
                (start < 0 || degree(node) < degree(start))) {
                start = node;
            }
        }
        std::deque<int> queue{start};
        placed[static_cast<std::size_t>(start)] = true;
        while (!queue.empty()) {
            const int node = queue.front();
            queue.pop_front();
            order.push_back(node);
            std::vector<int> next;
            for (int other : neighbours[static_cast<std::size_t>(node)]) {
                if (!placed[static_cast<std::size_t>(other)]) {
                    placed[static_cast<std::size_t>(other)] = true;
                    next.push_back(other);
                }
            }
            std::sort(next.begin(), next.end(),
                      [&](int a, int b) { return degree(a) < degree(b); });
            queue.insert(queue.end(), next.begin(), next.end());
        }
    }
    std::reverse(order.begin(), order.end());
    return order;
}

} // namespace

SkylineMatrix::SkylineMatrix(int size, const std::vector<std::pair<int, int>>& edges)
    : size_(size) {
    std::vector<std::vector<int>> neighbours(static_cast<std::size_t>(size));
    for (auto [a, b] : edges) {
        neighbours[static_cast<std::size_t>(a)].push_back(b);
        neighbours[static_cast<std::size_t>(b)].push_back(a);
    }
    order_ = ReverseCuthillMcKee(size, neighbours);
    position_.assign(static_cast<std::size_t>(size), 0);
    for (int i = 0; i < size; ++i) {
        position_[static_cast<std::size_t>(order_[static_cast<std::size_t>(i)])] = i;
    }
    first_.resize(static_cast<std::size_t>(size));
    for (int i = 0; i < size; ++i) {
        first_[static_cast<std::size_t>(i)] = i;
    }
    for (auto [a, b] : edges) {
        const int pa = position_[static_cast<std::size_t>(a)];
        const int pb = position_[static_cast<std::size_t>(b)];
        const int row = std::max(pa, pb);
        first_[static_cast<std::size_t>(row)] =
            std::min(first_[static_cast<std::size_t>(row)], std::min(pa, pb));
    }
    start_.resize(static_cast<std::size_t>(size) + 1);
    start_[0] = 0;
    for (int i = 0; i < size; ++i) {
        start_[static_cast<std::size_t>(i) + 1] =
            start_[static_cast<std::size_t>(i)] +
            static_cast<std::size_t>(i - first_[static_cast<std::size_t>(i)] + 1);
    }
    values_.assign(start_.back(), 0.0);
}

void SkylineMatrix::Clear() {
    std::fill(values_.begin(), values_.end(), 0.0);
}

double& SkylineMatrix::Entry(int row, int column) {
    return values_[start_[static_cast<std::size_t>(row)] +
                   static_cast<std::size_t>(column - first_[static_cast<std::size_t>(row)])];
}

void SkylineMatrix::Add(int row, int column, double value) {
    const int pr = position_[static_cast<std::size_t>(row)];
    const int pc = position_[static_cast<std::size_t>(column)];
    Entry(std::max(pr, pc), std::min(pr, pc)) += value;
}

std::vector<double> SkylineMatrix::Solve(const std::vector<double>& rhs) {
    for (int i = 0; i < size_; ++i) {
        const int fi = first_[static_cast<std::size_t>(i)];
        for (int j = fi; j <= i; ++j) {
            const int fj = first_[static_cast<std::size_t>(j)];
            double sum = Entry(i, j);
            for (int k = std::max(fi, fj); k < j; ++k) {
                sum -= Entry(i, k) * Entry(j, k);
            }
            if (j < i) {
                Entry(i, j) = sum / Entry(j, j);
            } else {
                if (!(sum > 0)) {
                    throw std::runtime_error("matrix not positive definite");
                }
                Entry(i, i) = std::sqrt(sum);
            }
        }
    }
    std::vector<double> y(static_cast<std::size_t>(size_));
    for (int i = 0; i < size_; ++i) {
        double sum = rhs[static_cast<std::size_t>(order_[static_cast<std::size_t>(i)])];
        for (int k = first_[static_cast<std::size_t>(i)]; k < i; ++k) {
            sum -= Entry(i, k) * y[static_cast<std::size_t>(k)];
        }
        y[static_cast<std::size_t>(i)] = sum / Entry(i, i);
    }
    // Back substitution with the transpose, walking each row's envelope.
    std::vector<double> x = y;
    for (int i = size_ - 1; i >= 0; --i) {
        x[static_cast<std::size_t>(i)] /= Entry(i, i);
        for (int k = first_[static_cast<std::size_t>(i)]; k < i; ++k) {
            x[static_cast<std::size_t>(k)] -= Entry(i, k) * x[static_cast<std::size_t>(i)];
        }
    }
    std::vector<double> result(static_cast<std::size_t>(size_));
    for (int i = 0; i < size_; ++i) {
        result[static_cast<std::size_t>(order_[static_cast<std::size_t>(i)])] =
            x[static_cast<std::size_t>(i)];
    }
    return result;
}

} // namespace quench
