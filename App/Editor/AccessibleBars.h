#pragma once

namespace quib {

/// Has assistive programs told what the bars of the pane are: tool bars and a panel, not plain widgets. Once is enough,
/// more do no harm. Main queue.
void installAccessibleBars();

} // namespace quib
