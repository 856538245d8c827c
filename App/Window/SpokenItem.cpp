#include "SpokenItem.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QTimer>

namespace quib {

void tellCurrentItem(QAbstractItemView &view)
{
    if (!QAccessible::isActive()) {
        return;
    }
    // Behind the list's own name, which is told when all have heard of the keyboard.
    QTimer::singleShot(0, &view, [&view] {
        QAccessibleInterface *list = QAccessible::queryAccessibleInterface(&view);
        QAccessibleInterface *item = list != nullptr && view.hasFocus() ? list->focusChild() : nullptr;
        if (item != nullptr) {
            QAccessibleEvent event(item, QAccessible::Focus);
            QAccessible::updateAccessibility(&event);
        }
    });
}

} // namespace quib
