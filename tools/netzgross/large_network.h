#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace veldra {

/// Takes pieces of a file in their order.
using ByteSink = std::function<void(std::string_view)>;

/// A graphic file of one network part (Windows-1252, CR LF) for benchmarks: `points` points on a
/// jittered grid of 500 m in Gauß-Krüger coordinates, about three observations a point, each on a
/// pair of points of its own, and one error ellipse a point unless `with_ellipses` is false. The
/// same arguments give the same bytes. The figures are invented, not adjusted. `points` below 1
/// gives a part without points.
void write_large_network(const ByteSink& sink, long points, bool with_ellipses);

/// Appends the same bytes to `out`.
void write_large_network(std::string& out, long points, bool with_ellipses);

}  // namespace veldra
