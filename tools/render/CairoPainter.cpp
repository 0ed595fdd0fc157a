#include <cairo-pdf.h>
#include <cairo.h>

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

#include "render/Painter.h"
#include "render/StrokeFont.h"

namespace laminate::cli {

namespace {

// PDF measures in points.
constexpr double kPointsPerMm = 72 / 25.4;
// The longest page that readers of PDF show; a larger sheet is drawn smaller.
constexpr double kLongestPage = 14400;
// The longest row or column of a picture that the drawing library makes.
constexpr int kMostPixels = 32000;

struct SurfaceDeleter {
  void operator()(cairo_surface_t* p) const { cairo_surface_destroy(p); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;
struct ContextDeleter {
  void operator()(cairo_t* p) const { cairo_destroy(p); }
};
using Context = std::unique_ptr<cairo_t, ContextDeleter>;

void Require(cairo_status_t status) {
  if (status == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
  if (status != CAIRO_STATUS_SUCCESS) {
    throw std::runtime_error(std::string("cannot draw: ") + cairo_status_to_string(status));
  }
}

// Hands the library's bytes to a sink. An exception of the sink must not pass through the library, which is C: it is
// kept until control is back.
class Stream {
 public:
  explicit Stream(Sink sink) : m_sink(std::move(sink)) {}

  static cairo_status_t Write(void* pSelf, const unsigned char* pData, unsigned nLength) {
    auto& self = *static_cast<Stream*>(pSelf);
    if (self.m_failure != nullptr) return CAIRO_STATUS_WRITE_ERROR;
    try {
      self.m_sink({reinterpret_cast<const char*>(pData), nLength});
    } catch (...) {
      self.m_failure = std::current_exception();
      return CAIRO_STATUS_WRITE_ERROR;
    }
    return CAIRO_STATUS_SUCCESS;
  }
  void RethrowFailure() {
    if (m_failure != nullptr) std::rethrow_exception(std::exchange(m_failure, nullptr));
  }

 private:
  Sink m_sink;
  std::exception_ptr m_failure;
};

class CairoPainter : public Painter {
 public:
  void BeginGroup(const Group& group) override {
    m_colour = group.colour;
    m_dOpacity = group.opacity;
    if (m_dOpacity < 1) cairo_push_group(m_context.get());
  }
  void EndGroup() override {
    if (m_dOpacity >= 1) return;
    cairo_pop_group_to_source(m_context.get());
    cairo_paint_with_alpha(m_context.get(), m_dOpacity);
  }
  void Fill(const Path& path, const Owner&, double dOpacity) override {
    Trace(path);
    Use(m_colour, dOpacity);
    cairo_fill(m_context.get());
  }
  void Hatch(const Path& path, const Owner&, double dPitch) override {
    cairo_t* p = m_context.get();
    cairo_save(p);
    Trace(path);
    cairo_clip(p);
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;
    cairo_clip_extents(p, &x0, &y0, &x1, &y1);
    // Lines that rise to the right, at their pitch from one another.
    const double dStep = dPitch * std::sqrt(2.0);
    for (double d = std::floor((x0 + y0) / dStep) * dStep; d <= x1 + y1; d += dStep) {
      cairo_move_to(p, d - y0, y0);
      cairo_line_to(p, d - y1, y1);
    }
    Use(m_colour, 1);
    UsePen({.width = dPitch / 4});
    cairo_stroke(p);
    cairo_restore(p);
  }
  void Stroke(const Path& path, const Owner&, const Pen& pen) override {
    Trace(path);
    Use(m_colour, pen.opacity);
    UsePen(pen);
    cairo_stroke(m_context.get());
  }
  void Cut(const Path& path, const Owner&, double dRim) override {
    Trace(path);
    Use(m_ground, 1);
    cairo_fill_preserve(m_context.get());
    Use(m_colour, 1);
    UsePen({.width = dRim});
    cairo_stroke(m_context.get());
  }
  void Text(const TextLine& line, const Owner&) override {
    Path path;
    AppendText(path, line.text, line.glyphWidth, line.glyphHeight, line.space);
    if (path.IsEmpty()) return;
    path.Apply(line.place);
    Trace(path);
    Use(m_colour, 1);
    UsePen({.width = line.stroke});
    cairo_stroke(m_context.get());
  }

 protected:
  CairoPainter(const Sheet& sheet, Sink sink) : m_stream(std::move(sink)), m_ground(sheet.ground) {}

  void Begin(Surface surface, double dScale) {
    m_surface = std::move(surface);
    Require(cairo_surface_status(m_surface.get()));
    m_context.reset(cairo_create(m_surface.get()));
    Require(cairo_status(m_context.get()));
    cairo_scale(m_context.get(), dScale, dScale);
    cairo_set_fill_rule(m_context.get(), CAIRO_FILL_RULE_EVEN_ODD);
    Use(m_ground, 1);
    cairo_paint(m_context.get());
  }
  // Ends the drawing; what it met is told now.
  void End() {
    const cairo_status_t status = cairo_status(m_context.get());
    m_context.reset();
    m_stream.RethrowFailure();
    Require(status);
  }

  Stream m_stream;
  Surface m_surface;

 private:
  void Use(Colour colour, double dOpacity) {
    constexpr double kFull = 255;
    cairo_set_source_rgba(m_context.get(), colour.red / kFull, colour.green / kFull, colour.blue / kFull, dOpacity);
  }
  void UsePen(const Pen& pen) {
    cairo_t* p = m_context.get();
    cairo_set_line_width(p, pen.width);
    cairo_set_line_cap(p, pen.square ? CAIRO_LINE_CAP_SQUARE : CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(p, pen.square ? CAIRO_LINE_JOIN_MITER : CAIRO_LINE_JOIN_ROUND);
    if (pen.dash > 0) {
      const double dashes[] = {pen.dash, pen.blank};
      cairo_set_dash(p, dashes, 2, 0);
    } else {
      cairo_set_dash(p, nullptr, 0, 0);
    }
  }
  void Trace(const Path& path) {
    cairo_t* p = m_context.get();
    cairo_new_path(p);
    for (const Path::Segment& segment : path.Segments()) {
      switch (segment.step) {
        case Path::Step::move:
          cairo_move_to(p, segment.to.x, segment.to.y);
          break;
        case Path::Step::line:
          cairo_line_to(p, segment.to.x, segment.to.y);
          break;
        case Path::Step::close:
          cairo_close_path(p);
          break;
        case Path::Step::arc:
          (segment.sweep > 0 ? cairo_arc : cairo_arc_negative)(p, segment.center.x, segment.center.y, segment.radius,
                                                               segment.from, segment.from + segment.sweep);
          break;
      }
    }
  }

  Context m_context;
  Colour m_ground;
  Colour m_colour;
  double m_dOpacity = 1;
};

class PdfPainter : public CairoPainter {
 public:
  PdfPainter(const Sheet& sheet, Sink sink) : CairoPainter(sheet, std::move(sink)) {
    const double dScale = std::min(kPointsPerMm, kLongestPage / std::max(sheet.width, sheet.height));
    Begin(Surface(cairo_pdf_surface_create_for_stream(Stream::Write, &m_stream, sheet.width * dScale,
                                                      sheet.height * dScale)),
          dScale);
  }
  void Finish() override {
    End();
    cairo_surface_finish(m_surface.get());
    m_stream.RethrowFailure();
    Require(cairo_surface_status(m_surface.get()));
  }
};

class PngPainter : public CairoPainter {
 public:
  PngPainter(const Sheet& sheet, int nPixels, Sink sink) : CairoPainter(sheet, std::move(sink)) {
    const double dScale = std::clamp(nPixels, 1, kMostPixels) / std::max(sheet.width, sheet.height);
    const auto pixels = [dScale](double d) { return std::max(1, static_cast<int>(std::lround(d * dScale))); };
    Begin(Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels(sheet.width), pixels(sheet.height))), dScale);
  }
  void Finish() override {
    End();
    const cairo_status_t status = cairo_surface_write_to_png_stream(m_surface.get(), Stream::Write, &m_stream);
    m_stream.RethrowFailure();
    Require(status);
  }
};

}  // namespace

std::unique_ptr<Painter> MakePdfPainter(const Sheet& sheet, Sink sink) {
  return std::make_unique<PdfPainter>(sheet, std::move(sink));
}
std::unique_ptr<Painter> MakePngPainter(const Sheet& sheet, int nPixels, Sink sink) {
  return std::make_unique<PngPainter>(sheet, nPixels, std::move(sink));
}

}  // namespace laminate::cli
