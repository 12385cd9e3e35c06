#pragma once

#include <string>
#include <vector>

/// From now on every text that is drawn into an image is noted.
void noteDrawnTexts();
std::vector<std::string>& drawnTexts();
