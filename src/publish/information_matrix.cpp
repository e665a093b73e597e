// L is the information matrix (each pair adds its weight to two places on the diagonal and takes it
// off two beside it), J the matrix of ones, n the number of players. L + c J / n has the inverse
// inv(L) + J / (c n), where inv(L) is what we are looking for: J and L do not disturb each other.
// So the sum, which is positive definite, is split into R'R (Cholesky), X = inverse of R', and the
// covariance of a and b is the product of the columns a and b of X, less 1 / (c n).
//
// Both steps go through the rows in blocks: the rows of a block are finished among themselves, then
// their multiples are taken from all rows behind them, four at a time, so that what is worked on
// stays near the processor.

#include "publish/information_matrix.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvendo {
namespace {

constexpr std::size_t kBlock = 48;

/// A square matrix, row behind row.
class Matrix {
 public:
  explicit Matrix(std::size_t size) : size_(size), cells_(size * size, 0.0) {}

  std::size_t Size() const { return size_; }
  double* Row(std::size_t row) { return cells_.data() + row * size_; }
  const double* Row(std::size_t row) const { return cells_.data() + row * size_; }
  std::vector<double>& Cells() { return cells_; }

 private:
  std::size_t size_;
  std::vector<double> cells_;
};

/// Takes multiples of rows from a row, between two columns: row -= sum of factors[k] * rows[k].
struct RowUpdate {
  const Matrix& rows;
  std::size_t from;  ///< columns
  std::size_t to;

  void Take(double* row, std::size_t first, const double* factors, std::size_t count) const {
    std::size_t k = 0;
    for (; k + 4 <= count; k += 4)
      TakeFour(row, first + k, factors + k);
    for (; k < count; ++k) {
      const double* other = rows.Row(first + k);
      for (std::size_t j = from; j < to; ++j)
        row[j] -= factors[k] * other[j];
    }
  }

 private:
  void TakeFour(double* row, std::size_t first, const double* factors) const {
    const double* a = rows.Row(first);
    const double* b = rows.Row(first + 1);
    const double* c = rows.Row(first + 2);
    const double* d = rows.Row(first + 3);
    const double fa = factors[0];
    const double fb = factors[1];
    const double fc = factors[2];
    const double fd = factors[3];
    for (std::size_t j = from; j < to; ++j)
      row[j] -= (fa * a[j] + fb * b[j]) + (fc * c[j] + fd * d[j]);
  }
};

/// Makes R of a symmetric matrix whose upper half is given; what is below the diagonal stays.
void Factorise(Matrix& matrix) {
  const std::size_t size = matrix.Size();
  double factors[kBlock];
  for (std::size_t begin = 0; begin < size; begin += kBlock) {
    const std::size_t end = std::min(begin + kBlock, size);
    for (std::size_t i = begin; i < end; ++i) {
      double* row = matrix.Row(i);
      for (std::size_t k = begin; k < i; ++k)
        factors[k - begin] = matrix.Row(k)[i];
      RowUpdate{matrix, i, size}.Take(row, begin, factors, i - begin);
      const double scale = 1 / std::sqrt(row[i]);
      for (std::size_t j = i; j < size; ++j)
        row[j] *= scale;
    }
    for (std::size_t i = end; i < size; ++i) {
      for (std::size_t k = begin; k < end; ++k)
        factors[k - begin] = matrix.Row(k)[i];
      RowUpdate{matrix, i, size}.Take(matrix.Row(i), begin, factors, end - begin);
    }
  }
}

/// X, the inverse of the transposed R: lower triangular.
Matrix InverseOfTransposed(const Matrix& r) {
  const std::size_t size = r.Size();
  Matrix x(size);
  for (std::size_t i = 0; i < size; ++i)
    x.Row(i)[i] = 1;
  double factors[kBlock];
  for (std::size_t begin = 0; begin < size; begin += kBlock) {
    const std::size_t end = std::min(begin + kBlock, size);
    for (std::size_t i = begin; i < end; ++i) {
      for (std::size_t k = begin; k < i; ++k)
        factors[k - begin] = r.Row(k)[i];
      RowUpdate{x, 0, i}.Take(x.Row(i), begin, factors, i - begin);
      const double scale = 1 / r.Row(i)[i];
      for (std::size_t j = 0; j <= i; ++j)
        x.Row(i)[j] *= scale;
    }
    for (std::size_t i = end; i < size; ++i) {
      for (std::size_t k = begin; k < end; ++k)
        factors[k - begin] = r.Row(k)[i];
      RowUpdate{x, 0, end}.Take(x.Row(i), begin, factors, end - begin);
    }
  }
  return x;
}

void Transpose(Matrix& matrix) {
  const std::size_t size = matrix.Size();
  for (std::size_t begin = 0; begin < size; begin += kBlock) {
    for (std::size_t other = 0; other <= begin; other += kBlock) {
      for (std::size_t i = begin; i < std::min(begin + kBlock, size); ++i) {
        for (std::size_t j = other; j < std::min(other + kBlock, i); ++j)
          std::swap(matrix.Row(i)[j], matrix.Row(j)[i]);
      }
    }
  }
}

}  // namespace

RatingCovariances::RatingCovariances(std::size_t players, const std::vector<PairInformation>& pairs)
    : size_(players) {
  Matrix matrix(players);
  double diagonal = 0;
  for (const PairInformation& pair : pairs) {
    matrix.Row(pair.first)[pair.first] += pair.weight;
    matrix.Row(pair.second)[pair.second] += pair.weight;
    matrix.Row(std::min(pair.first, pair.second))[std::max(pair.first, pair.second)] -= pair.weight;
    diagonal += 2 * pair.weight;
  }
  const auto n = static_cast<double>(players);
  const double c = diagonal > 0 ? diagonal / n : 1;  // as large as the other eigenvalues
  for (std::size_t i = 0; i < players; ++i) {
    for (std::size_t j = i; j < players; ++j)
      matrix.Row(i)[j] += c / n;
  }
  Factorise(matrix);
  Matrix x = InverseOfTransposed(matrix);
  Transpose(x);
  columns_ = std::move(x.Cells());
  shift_ = 1 / (c * n);
}

double RatingCovariances::Covariance(std::size_t a, std::size_t b) const {
  const double* row_a = columns_.data() + a * size_;
  const double* row_b = columns_.data() + b * size_;
  double sums[4] = {0, 0, 0, 0};
  std::size_t k = std::max(a, b);
  for (; k + 4 <= size_; k += 4) {
    for (std::size_t lane = 0; lane < 4; ++lane)
      sums[lane] += row_a[k + lane] * row_b[k + lane];
  }
  for (; k < size_; ++k)
    sums[0] += row_a[k] * row_b[k];
  return (sums[0] + sums[1]) + (sums[2] + sums[3]) - shift_;
}

}  // namespace tarvendo
