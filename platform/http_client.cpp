#include "platform/http_client.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString failureWords(const HttpReply& reply) {
    switch (reply.outcome) {
        case HttpReply::Outcome::answered:
            return {};
        case HttpReply::Outcome::notThere:
            return u"没有设置服务的网址"_s;
        case HttpReply::Outcome::unreachable:
            return u"连接不上"_s;
        case HttpReply::Outcome::refused:
            return u"被拒绝（%1）"_s.arg(reply.status);
        case HttpReply::Outcome::silent:
            return u"没有应答"_s;
        case HttpReply::Outcome::broken:
            return u"传输中断"_s;
        case HttpReply::Outcome::limited:
            return u"要得太勤，被拒绝（%1）"_s.arg(reply.status);
        case HttpReply::Outcome::resting:
            return u"刚才%1，%2 以前不再去要"_s.arg(reply.reason,
                                                    reply.until.toString(u"HH:mm:ss"_s));
    }
    return {};
}

}  // namespace guanchao
