#include "commands/unseen.h"

#include <algorithm>
#include <vector>

#include "reading/diagnostics.h"
#include "reading/losses.h"

namespace tool {

void warn_of_unseen(const std::string& file, const std::string& document) {
    std::vector<Loss> unseen = find_losses(document);
    const auto is_other = [](const Loss& loss) { return !is_content(loss); };
    unseen.erase(std::remove_if(unseen.begin(), unseen.end(), is_other), unseen.end());
    if (!unseen.empty())
        write_warning(file, "queries do not see " + get_summary(unseen) + "; " + get_advice(file));
}

}  // namespace tool
