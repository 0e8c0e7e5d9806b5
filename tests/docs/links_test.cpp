// SPDX-License-Identifier: MIT

// Follows every link and picture of the documentation: the file has to be there, and the heading in it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "markdown.h"

namespace {

using quxml_test::Page;

/// What a heading is called in links: in lower case, without punctuation, with "-" for blanks.
std::string make_anchor(const std::string& heading) {
    std::string anchor;
    for (const char c : heading) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0 || c == '-' || c == '_' || byte > 127)
            anchor += static_cast<char>(std::tolower(byte));
        else if (c == ' ')
            anchor += '-';
    }
    return anchor;
}

std::set<std::string> read_anchors(const Page& page) {
    std::set<std::string> anchors;
    for (const std::string& line : page.prose) {
        const std::size_t text = line.find_first_not_of('#');
        if (text != 0 && text != std::string::npos && line[text] == ' ')
            anchors.insert(make_anchor(line.substr(text + 1)));
    }
    return anchors;
}

std::vector<std::string> read_links(const Page& page) {
    std::string text;
    for (const std::string& line : page.prose)
        text += line + '\n';
    return quxml_test::find_all(text, R"(\]\(([^)\s]+)\))");
}

class Links : public testing::Test {
protected:
    void check(const Page& page, const std::string& link) const {
        const std::size_t hash = link.find('#');
        const std::string file = link.substr(0, hash);
        const std::filesystem::path folder = std::filesystem::path(page.name).parent_path();
        const std::string target = file.empty() ? page.name : (folder / file).lexically_normal().string();
        EXPECT_TRUE(std::filesystem::exists(quxml_test::top + target)) << page.name << " links to " << link;
        if (hash != std::string::npos) {
            EXPECT_EQ(anchors_of(target).count(link.substr(hash + 1)), 1U)
                << page.name << " links to " << link;
        }
    }

    const std::vector<Page> pages = quxml_test::read_pages();

private:
    std::set<std::string> anchors_of(const std::string& name) const {
        const auto page =
            std::find_if(pages.begin(), pages.end(), [&](const Page& other) { return other.name == name; });
        return page == pages.end() ? std::set<std::string>() : read_anchors(*page);
    }
};

TEST_F(Links, lead_to_files_and_headings_that_there_are) {
    std::size_t count = 0;
    for (const Page& page : pages) {
        for (const std::string& link : read_links(page)) {
            check(page, link);
            ++count;
        }
    }
    EXPECT_GT(count, 20U);
}

TEST_F(Links, lead_to_every_page_from_the_readme) {
    std::set<std::string> reached{"README.md"};
    for (std::size_t before = 0; before != reached.size();) {
        before = reached.size();
        for (const Page& page : pages) {
            if (reached.count(page.name) == 0)
                continue;
            const auto folder = std::filesystem::path(page.name).parent_path();
            for (const std::string& link : read_links(page))
                reached.insert((folder / link.substr(0, link.find('#'))).lexically_normal().string());
        }
    }
    for (const Page& page : pages)
        EXPECT_EQ(reached.count(page.name), 1U) << page.name;
}

}  // namespace
