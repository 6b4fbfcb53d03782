#pragma once

#include "base/fields.h"
#include "logoxml/template.h"

namespace kervan {

/// "Logo'nun okuyacağı biçimde yaz": the user's choice on a transfer screen. It is off at each
/// opening of the screen and stored nowhere.
class XmlChoice : public CheckField
{
public:
    Values values() const { return isChecked() ? Values::AsXml : Values::AsTheyStand; }
};

} // namespace kervan
