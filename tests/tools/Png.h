#pragma once
#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The points of a PNG picture.
struct PngPicture {
  int width = 0;
  int height = 0;
  std::vector<unsigned char> bytes;  // red, green and blue of each point, row by row

  explicit PngPicture(std::string_view sPng) {
    const auto read = [](void* pRest, unsigned char* pTarget, unsigned nLength) {
      auto& sRest = *static_cast<std::string_view*>(pRest);
      if (nLength > sRest.size()) return CAIRO_STATUS_READ_ERROR;
      std::copy_n(sRest.begin(), nLength, pTarget);
      sRest.remove_prefix(nLength);
      return CAIRO_STATUS_SUCCESS;
    };
    cairo_surface_t* p = cairo_image_surface_create_from_png_stream(read, &sPng);
    EXPECT_EQ(cairo_surface_status(p), CAIRO_STATUS_SUCCESS);
    if (cairo_surface_status(p) == CAIRO_STATUS_SUCCESS) {
      width = cairo_image_surface_get_width(p);
      height = cairo_image_surface_get_height(p);
      for (int y = 0; y < height; ++y) {
        const unsigned char* pRow = cairo_image_surface_get_data(p) + y * cairo_image_surface_get_stride(p);
        for (int x = 0; x < width; ++x) {
          for (const int i : {2, 1, 0}) bytes.push_back(pRow[4 * x + i]);
        }
      }
    }
    cairo_surface_destroy(p);
  }

  std::array<int, 3> At(int x, int y) const {
    const auto n = 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
    return {bytes.at(n), bytes.at(n + 1), bytes.at(n + 2)};
  }
};
