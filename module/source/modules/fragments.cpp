#include "modules/fragments.h"

#include "modules/supermodule.h"

namespace
{
QVector<FragmentPlace>* s_places = nullptr;
/** Where the text that is being put together will stand in that around it. */
int s_start = 0;
} // namespace

FragmentRecord::FragmentRecord(QVector<FragmentPlace>& p_places)
{
    s_places = &p_places;
    s_start = 0;
}

FragmentRecord::~FragmentRecord() { s_places = nullptr; }

void appendFragments(QString& p_text, const supermodule* p_first, Fragment p_fragment)
{
    const int start = s_start;
    for (const supermodule* module = p_first; module; module = module->next()) {
        s_start = start + p_text.size();
        const QString fragment = (module->*p_fragment)();
        if (s_places && !fragment.isEmpty()) {
            s_places->append({module->registryKey(), s_start, fragment.size()});
        }
        p_text += fragment;
    }
    s_start = start;
}
