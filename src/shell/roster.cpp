#include "shell/roster.h"

namespace varnhold {

DaemonInfo::DaemonInfo(std::string icon, std::string title, std::string launchdLabel,
                       std::string deptKey)
    : icon_(std::move(icon)),
      title_(std::move(title)),
      launchdLabel_(std::move(launchdLabel)),
      deptKey_(std::move(deptKey)) {}

void DaemonInfo::setTitle(std::string title) {
    title_ = std::move(title);
    for (const auto& observer : observers_) {
        observer(*this);
    }
}

void DaemonInfo::observe(std::function<void(const DaemonInfo&)> observer) {
    observers_.push_back(std::move(observer));
}

Roster::Roster()
    : staffDaemons{{"🏢", "Chief of Staff (Bot)", "com.ostrelleai.cos.telegramd", "cos"},
                   {"💻", "Chief Technology Officer (Bot)", "com.ostrelleai.technology.telegramd",
                    "technology"},
                   {"🤖", "CTO (Claude Bot)", "com.ostrelleai.cto.telegramd", "cto"},
                   {"📈", "Chief Financial Officer (Bot)", "com.ostrelleai.finance.telegramd",
                    "finance"},
                   {"📢", "Director of Communications (Bot)",
                    "com.ostrelleai.communications.telegramd", "communications"},
                   {"💬", "Comms (Claude Bot)", "com.ostrelleai.comms.telegramd", "comms"},
                   {"👤", "Executive Assistant (Bot)", "com.ostrelleai.ea.telegramd", "ea"},
                   {"🏋️", "Director of Health & Wellness (Bot)",
                    "com.ostrelleai.health.telegramd", "health"},
                   {"👥", "Chief Operating Officer (Bot)", "com.ostrelleai.operations.telegramd",
                    "operations"},
                   {"🤝", "Director of Philanthropy (Bot)",
                    "com.ostrelleai.philanthropy.telegramd", "philanthropy"},
                   {"🔒", "Director of Security (Bot)", "com.ostrelleai.security.telegramd",
                    "security"},
                   {"🚗", "Director of Transportation (Bot)", "com.ostrelleai.transport.telegramd",
                    "transport"},
                   {"⚖️", "Director of Legal & Estate (Bot)", "com.ostrelleai.legal.telegramd",
                    "legal"},
                   {"🏠", "Director of Property (Bot)", "com.ostrelleai.property.telegramd",
                    "property"},
                   {"👨👩👧", "Director of Family Governance (Bot)", "com.ostrelleai.family.telegramd",
                    "family"},
                   {"✈️", "Director of Lifestyle (Bot)", "com.ostrelleai.lifestyle.telegramd",
                    "lifestyle"},
                   {"🎮", "Game Studio (Bot)", "com.ostrelleai.studio.telegramd", "studio"}},
      workerDaemons{{"👨💻", "Software Developer (Bot)",
                     "com.ostrelleai.software-developer.telegramd", "software-developer"},
                    {"👩💻", "Software Dev A (Umber Bot)",
                     "com.ostrelleai.software-developer-a.telegramd", "software-developer-a"}},
      systemDaemons{{"📧", "Cerebras Email Monitor", "com.ostrelleai.email-monitor", ""}},
      kindwellDaemons{{"🌱", "Kindwell Bounty Watch", "com.ostrelleai.kindwell.bountywatch",
                       "kindwell-bountywatch"},
                      {"💬", "Kindwell Feedback Bot", "com.ostrelleai.kindwell.feedback",
                       "kindwell-feedback"}} {}

} // namespace varnhold
