#include "platform/posix/cell_content.h"

#include "platform/unicode.h"

namespace {

// Stands in front of a mark that has no character to stand on.
constexpr char32_t kMarkGround = 0x25CC;
constexpr Cell kTabSign = 0xA4;

}  // namespace

CellCluster ContentAt(CellView cells, std::size_t index) {
  const Cell cell = cells[index];
  CellCluster content{cell == U'\t' ? kTabSign : cell, {}};
  if ((cell & kCellKinds) == kClusterCell) {
    content = cells.ClusterOf(cell);
    if (content.base == 0) content.base = kMarkGround;
  } else if ((cell & kCellKinds) == kBadCell) {
    content.base = kReplacementCharacter;
  }
  if (content.marks[0] == 0 && KindOfCharacter(content.base) == CharacterKind::mark) {
    content = {kMarkGround, {content.base}};
  }
  const bool half = cell == kWideTail ||
                    (ColumnsAt(cells, index) == 1 && KindOfCharacter(content.base) == CharacterKind::wide);
  return half ? CellCluster{U' ', {}} : content;
}
