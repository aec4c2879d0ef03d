#pragma once

#import <Foundation/Foundation.h>

#include <string>

namespace varnhold {

// What isn't valid UTF-8 comes out empty, which no text of ours is.
inline NSString* nativeText(const std::string& utf8) {
    NSString* made = [[[NSString alloc] initWithBytes:utf8.data()
                                               length:utf8.size()
                                             encoding:NSUTF8StringEncoding] autorelease];
    return made == nil ? @"" : made;
}

} // namespace varnhold
