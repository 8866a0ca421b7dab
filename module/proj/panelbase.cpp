#include "proj/panelbase.h"

PanelBase::PanelBase(QWidget* p_parent) : QWidget(p_parent) {}
