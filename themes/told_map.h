// What assistive tools are told of a map: a list with an item for each box, named as it is, with
// its gain and the rest as its description.
#pragma once

namespace guanchao {

// From now on, of every map.
void tellBoxesOfMaps();

}  // namespace guanchao
