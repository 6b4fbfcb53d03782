#pragma once

#include "check/checks.h"
#include "check/listshape.h"
#include "check/readinessrules.h"

#include <memory>

namespace kervan {

class Cr;
class St;
class Stoktrf;

// What the card transfers look for in their lists and choices. The screen outlives its checks.

ListShape shapeOf(const Cr &cr);
ListShape shapeOf(const Stoktrf &stoktrf);
ListShape shapeOf(const St &st);

QList<Rule> rulesOf(Cr &cr);
QList<Rule> rulesOf(Stoktrf &stoktrf);
QList<Rule> rulesOf(St &st, const ContentOf &contentOf = nullptr);

/// The rules at work, with the definitions that are missing and all fields that they look at.
std::unique_ptr<Checks> checksOf(Cr &cr);
std::unique_ptr<Checks> checksOf(Stoktrf &stoktrf);
std::unique_ptr<Checks> checksOf(St &st, const ContentOf &contentOf = nullptr);

} // namespace kervan
