#include "iparamb2.h"

int ParamBlockDesc2::IDtoIndex(ParamID id) const {
    for (int i = 0; i < count; ++i)
        if (paramdefs[i].ID == id)
            return i;
    return -1;
}

int ParamBlockDesc2::NameToIndex(const MCHAR* name) const {
    if (!name)
        return -1;
    for (int i = 0; i < count; ++i)
        if (paramdefs[i].int_name && std::wcscmp(paramdefs[i].int_name, name) == 0)
            return i;
    return -1;
}
