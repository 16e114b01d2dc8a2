#pragma once

/// Where the services live that a note links to. These are macros so that the formats below can be single literals.
#define QV_TWITTER_PROFILE_BASE_URL "http://twitter.com/"
#define QV_WEIBO_PROFILE_BASE_URL "http://weibo.com/"
#define QV_MAP_SEARCH_URL "http://maps.google.com/?q="
