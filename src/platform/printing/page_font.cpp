#include "platform/printing/page_font.h"

#include <cairo/cairo-ft.h>
#include <fontconfig/fontconfig.h>
#include <hb-ft.h>
#include <hb-ot.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

namespace platform_printing {

namespace {

constexpr char32_t kFirstKept = 0x100;  // characters below are kept in a table
constexpr int kNormalWeight = 400;
constexpr double kStretchSteps = 1000;
constexpr std::size_t kMostPictures = 8192;

struct PatternEnd {
  void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
struct FontSetEnd {
  void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
};
struct FaceEnd {
  void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
};
struct ScaledEnd {
  void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
};
struct OptionsEnd {
  void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
using Pattern = std::unique_ptr<FcPattern, PatternEnd>;
using Face = std::unique_ptr<cairo_font_face_t, FaceEnd>;
using Scaled = std::unique_ptr<cairo_scaled_font_t, ScaledEnd>;

const FcChar8* Utf8(const char* text) {
  return reinterpret_cast<const FcChar8*>(text);
}

// What the system is asked for. Faces without outlines are of no use on paper.
Pattern Describe(const FontWish& wish) {
  Pattern pattern(FcPatternCreate());
  FcPattern* const p = pattern.get();
  FcPatternAddString(p, FC_FAMILY, Utf8(wish.family.c_str()));
  if (wish.fixedPitch) FcPatternAddString(p, FC_FAMILY, Utf8("monospace"));
  FcPatternAddInteger(p, FC_WEIGHT, FcWeightFromOpenType(wish.weight));
  FcPatternAddInteger(p, FC_SLANT, wish.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  if (wish.fixedPitch) FcPatternAddInteger(p, FC_SPACING, FC_MONO);
  FcPatternAddBool(p, FC_OUTLINE, FcTrue);
  FcPatternAddBool(p, FC_SCALABLE, FcTrue);
  FcConfigSubstitute(nullptr, p, FcMatchPattern);
  FcDefaultSubstitute(p);
  return pattern;
}

// The face at one size, in pixels; `stretch` is how much wider than made it is.
Scaled ScaleFace(cairo_font_face_t* face, double em, double stretch) {
  const std::unique_ptr<cairo_font_options_t, OptionsEnd> options(cairo_font_options_create());
  cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
  cairo_matrix_t size;
  cairo_matrix_t upright;
  cairo_matrix_init_scale(&size, em * stretch, em);
  cairo_matrix_init_identity(&upright);
  Scaled font(cairo_scaled_font_create(face, &size, &upright, options.get()));
  if (cairo_scaled_font_status(font.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  return font;
}

// The file of a face, as long as this lives.
class OpenFace {
 public:
  explicit OpenFace(cairo_scaled_font_t* font) : font_(font), face_(cairo_ft_scaled_font_lock_face(font)) {}
  ~OpenFace() {
    if (face_ != nullptr) cairo_ft_scaled_font_unlock_face(font_);
  }
  OpenFace(const OpenFace&) = delete;
  OpenFace& operator=(const OpenFace&) = delete;

  [[nodiscard]] bool IsUsable() const { return face_ != nullptr && FT_IS_SCALABLE(face_); }
  [[nodiscard]] const FT_FaceRec& Facts() const { return *face_; }
  [[nodiscard]] FT_Face Handle() const { return face_; }
  [[nodiscard]] unsigned long GlyphOf(char32_t character) const {
    return FT_Get_Char_Index(face_, character);
  }
  // In units of the face, as it was made. 0 when the glyph cannot be loaded.
  [[nodiscard]] double AdvanceOf(unsigned long glyph) const {
    if (FT_Load_Glyph(face_, static_cast<FT_UInt>(glyph), FT_LOAD_NO_SCALE) != 0) return 0;
    return static_cast<double>(face_->glyph->metrics.horiAdvance);
  }
  // The mean of the letters, in ems; of one of them where the pitch is fixed.
  [[nodiscard]] double MeanAdvance(bool fixedPitch) const {
    double sum = 0;
    int count = 0;
    for (char32_t lower = U'a'; lower <= U'z'; ++lower) {
      if (fixedPitch && lower != U'x') continue;
      sum += AdvanceOf(GlyphOf(lower)) + AdvanceOf(GlyphOf(lower - U'a' + U'A'));
      count += 2;
    }
    return sum / count / face_->units_per_EM;
  }

 private:
  cairo_scaled_font_t* font_;
  FT_Face face_;
};

int Round(double pixels) {
  return static_cast<int>(std::lround(pixels));
}

}  // namespace

// A face that stands in for characters that the first one lacks. It is opened when one is met.
struct Fallback {
  FcPattern* proposal;  // of the list of proposals
  Face face;
  // Glyphs that are wider than their cells are made narrower, each as far as it needs; by thousandths of
  // that.
  std::unordered_map<long, Scaled> sizes;
};

struct PageFont::Faces {
  explicit Faces(const FontWish& wanted) : wish(wanted), pattern(Describe(wanted)) {}

  [[nodiscard]] bool Open();
  void Measure(const OpenFace& open);
  [[nodiscard]] Glyph Find(char32_t character);
  [[nodiscard]] Glyph FindElsewhere(char32_t character);
  [[nodiscard]] Glyph FindIn(Fallback& fallback, char32_t character);
  [[nodiscard]] cairo_scaled_font_t* SizeOf(Fallback& fallback, double stretch);
  [[nodiscard]] Picture Compose(std::u32string_view text, int columns);
  [[nodiscard]] Picture ComposeIn(Fallback& fallback, std::u32string_view text, std::size_t needed,
                                  int columns);
  void AskForFallbacks();

  FontWish wish;
  Pattern pattern;
  FontMetrics metrics;
  double em = 1;
  Face face;
  Scaled main;
  std::array<std::optional<Glyph>, kFirstKept> kept;
  std::unordered_map<char32_t, Glyph> others;
  std::map<std::u32string, Picture> pictures;
  Fallback first{nullptr, nullptr, {}};  // the font's own face, for pictures
  std::unique_ptr<FcFontSet, FontSetEnd> proposals;
  std::vector<Fallback> fallbacks;
  bool asked = false;
};

bool PageFont::Faces::Open() {
  FcResult result = FcResultNoMatch;
  const Pattern match(FcFontMatch(nullptr, pattern.get(), &result));
  if (match == nullptr) return false;
  face.reset(cairo_ft_font_face_create_for_pattern(match.get()));
  main = ScaleFace(face.get(), 1, 1);
  if (main == nullptr) return false;
  double stretch = 1;
  {
    const OpenFace open(main.get());
    if (!open.IsUsable()) return false;
    // The flag of a face tells less than its letters do.
    metrics.fixedPitch = open.AdvanceOf(open.GlyphOf(U'i')) == open.AdvanceOf(open.GlyphOf(U'W'));
    Measure(open);
    const double natural = open.MeanAdvance(metrics.fixedPitch) * em;
    if (metrics.fixedPitch && natural > 0) stretch = metrics.advance / natural;
  }
  main = ScaleFace(face.get(), em, stretch);
  return main != nullptr;
}

void PageFont::Faces::Measure(const OpenFace& open) {
  const FT_FaceRec& facts = open.Facts();
  const double units = facts.units_per_EM;
  const double cell = (facts.ascender - facts.descender) / units;
  em = std::max(wish.emPixels > 0 ? wish.emPixels : wish.cellPixels / cell, 1.0);
  metrics.ascent = Round(facts.ascender / units * em);
  metrics.descent = Round(-facts.descender / units * em);
  metrics.internalLeading = std::max(metrics.ascent + metrics.descent - Round(em), 0);
  metrics.externalLeading = std::max(Round(facts.height / units * em) - metrics.ascent - metrics.descent, 0);
  metrics.advance = std::max(Round(open.MeanAdvance(metrics.fixedPitch) * em), 1);
  metrics.widest = std::max(Round(facts.max_advance_width / units * em), metrics.advance);
  metrics.weight = wish.weight > 0 ? wish.weight : kNormalWeight;
  metrics.italic = wish.italic;
  metrics.lineThickness = std::max(Round(facts.underline_thickness / units * em), 1);
  metrics.underlineTop =
      std::max(Round(-facts.underline_position / units * em - metrics.lineThickness / 2.0), 1);
}

PageFont::Glyph PageFont::Faces::Find(char32_t character) {
  {
    const OpenFace open(main.get());
    if (!open.IsUsable()) return {};
    if (const unsigned long glyph = open.GlyphOf(character)) return {main.get(), glyph};
  }
  return FindElsewhere(character);
}

PageFont::Glyph PageFont::Faces::FindElsewhere(char32_t character) {
  AskForFallbacks();
  for (Fallback& fallback : fallbacks) {
    FcCharSet* characters = nullptr;
    if (FcPatternGetCharSet(fallback.proposal, FC_CHARSET, 0, &characters) != FcResultMatch ||
        FcCharSetHasChar(characters, character) == FcFalse) {
      continue;
    }
    const Glyph glyph = FindIn(fallback, character);
    if (glyph.face != nullptr) return glyph;
  }
  return {};
}

void PageFont::Faces::AskForFallbacks() {
  if (asked) return;
  asked = true;
  FcResult result = FcResultNoMatch;
  proposals.reset(FcFontSort(nullptr, pattern.get(), FcTrue, nullptr, &result));
  for (int i = 0; proposals != nullptr && i < proposals->nfont; ++i) {
    fallbacks.push_back({proposals->fonts[i], nullptr, {}});
  }
}

PageFont::Glyph PageFont::Faces::FindIn(Fallback& fallback, char32_t character) {
  cairo_scaled_font_t* const whole = SizeOf(fallback, 1);
  if (whole == nullptr) return {};
  const OpenFace open(whole);
  const unsigned long glyph = open.IsUsable() ? open.GlyphOf(character) : 0;
  if (glyph == 0) return {};
  const double natural = open.AdvanceOf(glyph) / open.Facts().units_per_EM * em;
  return {SizeOf(fallback, natural > metrics.advance ? metrics.advance / natural : 1), glyph};
}

// Null when the face cannot be opened.
cairo_scaled_font_t* PageFont::Faces::SizeOf(Fallback& fallback, double stretch) {
  if (fallback.face == nullptr) {
    const Pattern prepared(FcFontRenderPrepare(nullptr, pattern.get(), fallback.proposal));
    fallback.face.reset(cairo_ft_font_face_create_for_pattern(prepared.get()));
  }
  Scaled& size = fallback.sizes[std::lround(stretch * kStretchSteps)];
  if (size == nullptr) size = ScaleFace(fallback.face.get(), em, stretch);
  return size.get();
}

PageFont::Picture PageFont::Faces::Compose(std::u32string_view text, int columns) {
  AskForFallbacks();
  // A face that has the marks too is better than one that lacks them.
  for (const std::size_t needed : {text.size(), std::size_t{1}}) {
    if (first.face == nullptr) first.face.reset(cairo_font_face_reference(face.get()));
    Picture picture = ComposeIn(first, text, needed, columns);
    for (std::size_t i = 0; picture.face == nullptr && i < fallbacks.size(); ++i) {
      FcCharSet* characters = nullptr;
      if (FcPatternGetCharSet(fallbacks[i].proposal, FC_CHARSET, 0, &characters) != FcResultMatch) continue;
      const auto has = [characters](char32_t one) { return FcCharSetHasChar(characters, one) != FcFalse; };
      if (std::ranges::all_of(text.substr(0, needed), has)) {
        picture = ComposeIn(fallbacks[i], text, needed, columns);
      }
    }
    if (picture.face != nullptr) return picture;
  }
  return {};
}

// Nothing when the face lacks one of the first `needed` characters.
PageFont::Picture PageFont::Faces::ComposeIn(Fallback& fallback, std::u32string_view text, std::size_t needed,
                                             int columns) {
  cairo_scaled_font_t* const whole = SizeOf(fallback, 1);
  if (whole == nullptr) return {};
  const OpenFace open(whole);
  const auto lacks = [&open](char32_t one) { return open.GlyphOf(one) == 0; };
  if (!open.IsUsable() || std::ranges::any_of(text.substr(0, needed), lacks)) return {};
  const std::unique_ptr<hb_face_t, decltype(&hb_face_destroy)> shapes(
      hb_ft_face_create_referenced(open.Handle()), hb_face_destroy);
  const std::unique_ptr<hb_font_t, decltype(&hb_font_destroy)> units(hb_font_create(shapes.get()),
                                                                     hb_font_destroy);
  const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(),
                                                                          hb_buffer_destroy);
  for (const char32_t one : text)
    if (!lacks(one)) hb_buffer_add(buffer.get(), one, 0);
  hb_buffer_set_content_type(buffer.get(), HB_BUFFER_CONTENT_TYPE_UNICODE);
  hb_buffer_guess_segment_properties(buffer.get());
  hb_buffer_set_direction(buffer.get(), HB_DIRECTION_LTR);
  hb_shape(units.get(), buffer.get(), nullptr, 0);
  unsigned count = 0;
  const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer.get(), &count);
  const hb_glyph_position_t* const places = hb_buffer_get_glyph_positions(buffer.get(), &count);
  const double scale = em / hb_face_get_upem(shapes.get());
  double natural = 0;
  for (unsigned i = 0; i < count; ++i)
    natural += places[i].x_advance * scale;
  const double room = columns * static_cast<double>(metrics.advance);
  const double stretch = natural > room ? room / natural : 1;
  // A narrow one stands at the left, as those of the font do.
  double x = columns > 1 ? std::max((room - natural) / 2, 0.0) : 0;
  Picture picture{SizeOf(fallback, stretch), {}};
  for (unsigned i = 0; i < count; ++i) {
    const hb_glyph_position_t& place = places[i];
    picture.glyphs.push_back(
        {infos[i].codepoint, x + place.x_offset * scale * stretch, -place.y_offset * scale});
    x += place.x_advance * scale * stretch;
  }
  return picture;
}

PageFont::PageFont(std::unique_ptr<Faces> faces) : faces_(std::move(faces)) {}
PageFont::~PageFont() = default;

std::unique_ptr<PageFont> PageFont::Make(const FontWish& wish) {
  auto faces = std::make_unique<Faces>(wish);
  if (faces->pattern == nullptr || !faces->Open()) return nullptr;
  return std::unique_ptr<PageFont>(new PageFont(std::move(faces)));
}

const FontWish& PageFont::Wish() const {
  return faces_->wish;
}

const FontMetrics& PageFont::Metrics() const {
  return faces_->metrics;
}

PageFont::Glyph PageFont::GlyphOf(char32_t character) const {
  if (character < kFirstKept) {
    std::optional<Glyph>& kept = faces_->kept[character];
    if (!kept) kept = faces_->Find(character);
    return *kept;
  }
  const auto [place, isNew] = faces_->others.try_emplace(character);
  if (isNew) place->second = faces_->Find(character);
  return place->second;
}

const PageFont::Picture& PageFont::PictureOf(const CellCluster& content, int columns) const {
  std::u32string text{content.base};
  for (const char32_t mark : content.marks)
    if (mark != 0) text += mark;
  auto& pictures = faces_->pictures;
  if (pictures.size() >= kMostPictures) pictures.clear();
  const auto [place, isNew] = pictures.try_emplace(text + static_cast<char32_t>(columns));
  if (isNew) place->second = faces_->Compose(text, columns);
  return place->second;
}

}  // namespace platform_printing
