#include "AccessibleBars.h"

#include "FindBar.h"
#include "FormatBar.h"
#include "InformationPanel.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace quib {

namespace {

QAccessibleInterface *accessibleBar(const QString & /*className*/, QObject *object)
{
    if (auto *formats = qobject_cast<FormatBar *>(object); formats != nullptr) {
        return new QAccessibleWidget(formats, QAccessible::ToolBar);
    }
    if (auto *find = qobject_cast<FindBar *>(object); find != nullptr) {
        return new QAccessibleWidget(find, QAccessible::ToolBar);
    }
    if (auto *information = qobject_cast<InformationPanel *>(object); information != nullptr) {
        return new QAccessibleWidget(information, QAccessible::Grouping);
    }
    return nullptr;
}

} // namespace

void installAccessibleBars()
{
    QAccessible::removeFactory(accessibleBar);
    QAccessible::installFactory(accessibleBar);
}

} // namespace quib
