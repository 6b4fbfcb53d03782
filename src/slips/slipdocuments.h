#pragma once

#include "slips/slipwriter.h"

namespace kervan {

// The documents of the slip screens, each by the procedure that saves it.

// From workbooks.
const SlipDocument &exeldenkasanakitkaydet();
const SlipDocument &exeldenbankafisikaydet();
const SlipDocument &exelkasanakitkaydet();
const SlipDocument &exelkredikartkaydet();
// From text exports.
const SlipDocument &kredikartkaydet();
const SlipDocument &senetkaydet();
const SlipDocument &cekkaydet();
const SlipDocument &kasanakitkaydet();
/// Has no template, so that writing it always fails; kasanakitkaydet() is the one that serves cash.
const SlipDocument &nakitkaydet();

} // namespace kervan
