#include "QBEditorAutoCompleteItem.h"

QBEditorAutoCompleteItem::~QBEditorAutoCompleteItem() = default;
