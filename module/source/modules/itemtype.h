#pragma once

#include <QGraphicsItem>

/** The types of what stands in the scene. Items are told apart by them, so each has its own. */
enum ItemType {
    ModuleItemType = QGraphicsItem::UserType + 1,
    ConnectorItemType,
    PopUpItemType,
    /** A part of a block that reaches out of its rectangle: a press on it means the block. */
    ModulePartItemType,
    ButtonItemType
};
