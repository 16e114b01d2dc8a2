#include "Fields/EastAsian.h"

#include "Text/Letters.h"

#include <algorithm>
#include <vector>

namespace qv::recognition {
namespace {

/// Words written as one text with spaces between them.
class Words {
  public:
    explicit Words(std::string_view all) {
        for (std::size_t end = 0; !all.empty(); all.remove_prefix(std::min(all.size(), end + 1))) {
            end = std::min(all.find(' '), all.size());
            mWords.push_back(all.substr(0, end));
        }
    }
    auto begin() const { return mWords.begin(); }
    auto end() const { return mWords.end(); }

  private:
    std::vector<std::string_view> mWords;
};

const Words& titles() {
    static const Words words(
        "部長 課長 係長 次長 室長 所長 店長 工場長 支店長 局長 院長 館長 校長 園長 社長 会長 "
        "専務 常務 取締役 執行役員 代表 理事 監査役 顧問 主任 主幹 主査 担当 社員 教授 准教授 "
        "講師 助教 研究員 弁護士 税理士 会計士 行政書士 司法書士 建築士 医師 記者 秘書 "
        "デザイナー マネージャー マネジャー エンジニア ディレクター プロデューサー コンサルタント "
        "リーダー アドバイザー プランナー プログラマー カメラマン ライター 经理 總經理 经纪人 董事 "
        "董事长 主管 工程师 总监 总裁 总工 专员 律师 会计师 设计师 顾问 部长 助理 秘书 主席 "
        "院长 校长 所长 讲师 医生 记者 经纪 대표 이사 사장 부장 과장 차장 대리 팀장 실장 "
        "본부장 상무 전무 회장 부회장 교수 연구원 변호사 회계사 세무사 기자 매니저 디자이너 "
        "엔지니어 컨설턴트 원장 소장 지점장 주임 사원 책임 선임 수석");
    return words;
}

const Words& forms() {
    static const Words words(
        "株式会社 有限会社 合同会社 合資会社 合名会社 一般社団法人 公益財団法人 特定非営利活動法人 "
        "医療法人 学校法人 (株) ㈱ (有) 有限公司 有限责任公司 股份 公司 集团 주식회사 "
        "유한회사 (주) ㈜ (유) 재단법인 사단법인");
    return words;
}

const Words& firmWords() {
    static const Words words(
        "大学 大學 銀行 银行 病院 医院 学校 高校 研究所 事務所 事务所 商事 商会 商店 工業 "
        "製作所 建設 不動産 協会 协会 組合 科技 贸易 实业 工厂 出版社 新聞社 中心 대학교 은행 "
        "병원 그룹 전자 무역 건설 산업 연구소 협회 학교 법무법인 회계법인 호텔 市役所 省 庁 "
        "クリニック グループ ホールディングス");
    return words;
}

const Words& departmentEnds() {
    static const Words words(
        "部 課 室 局 科 係 支店 支社 営業所 センター チーム グループ 学部 研究科 研究室 处 "
        "科室 中心 부 팀 실 과 국 센터 본부 지점 사업부 학과 연구실");
    return words;
}

const Words& surnames() {
    static const Words words(
        "佐藤 鈴木 高橋 田中 伊藤 渡辺 渡邊 渡邉 渡部 山本 中村 小林 加藤 吉田 山田 佐々木 "
        "山口 松本 井上 木村 林 斎藤 斉藤 齋藤 清水 山崎 森 池田 橋本 阿部 石川 山下 中島 "
        "石井 小川 前田 岡田 長谷川 藤田 後藤 近藤 村上 遠藤 青木 坂本 福田 太田 西村 藤井 "
        "金子 岡本 藤原 三浦 中野 中川 原田 松田 竹内 小野 田村 中山 和田 石田 森田 上田 原 "
        "内田 柴田 酒井 宮崎 横山 高木 安藤 宮本 大野 小島 工藤 谷口 今井 高田 増田 丸山 "
        "杉山 村田 大塚 新井 小山 平野 藤本 河野 上野 野口 武田 松井 千葉 菅原 岩崎 久保 "
        "木下 佐野 野村 松尾 菊地 菊池 市川 杉本 古川 大西 島田 水野 桜井 高野 吉川 山内 "
        "西田 西川 五十嵐 北村 安田 服部 本田 関 星野 川口 平田 岩田 大島 本間 土屋 堀 東 "
        "川崎 王 李 张 張 刘 劉 陈 陳 杨 楊 黄 赵 趙 吴 吳 周 徐 孙 孫 马 馬 朱 胡 "
        "郭 何 高 罗 羅 郑 鄭 梁 谢 謝 宋 唐 许 許 韩 韓 冯 馮 邓 鄧 曹 彭 曾 肖 田 "
        "董 袁 潘 于 蒋 蔣 蔡 余 杜 叶 葉 程 苏 蘇 魏 吕 丁 任 沈 姚 卢 姜 崔 钟 谭 "
        "陆 汪 范 金 石 廖 贾 夏 韦 付 方 白 邹 孟 熊 秦 邱 江 尹 薛 闫 段 雷 侯 龙 "
        "史 陶 黎 贺 顾 毛 郝 龚 邵 万 钱 严 覃 武 戴 莫 孔 向 汤 欧阳 司马 诸葛 김 "
        "이 박 최 정 강 조 윤 장 임 한 오 서 신 권 황 안 송 전 홍 유 고 문 양 손 배 "
        "백 허 남 심 노 하 곽 성 차 주 우 구 민 류 나 진 지 엄 채 원 천 방 공 현 함 "
        "변 염 여 추 도 소 석 선 설 마 길 연 위 표 명 기 반 왕 남궁 황보 선우");
    return words;
}

constexpr std::u32string_view kJapanesePlaces = U"都道府県市区町村郡";
constexpr std::u32string_view kStreetSigns = U"丁番号階路街楼室层弄巷县镇省座";

std::string closed(std::string_view text) {
    std::string all;
    for (const auto& word : splitAtSpaces(text))
        all += word;
    return all;
}

bool holdsAny(const std::string& text, const Words& words) {
    return std::any_of(words.begin(), words.end(), [&text](auto word) { return text.find(word) != std::string::npos; });
}

bool endsWithAny(const std::string& text, const Words& words) {
    return std::any_of(words.begin(), words.end(),
                       [&text](auto word) { return text.size() > word.size() && endsWith(text, word); });
}

bool startsWithAny(const std::string& text, const Words& words) {
    return std::any_of(words.begin(), words.end(),
                       [&text](auto word) { return text.size() > word.size() && startsWith(text, word); });
}

int countEastAsian(std::string_view text) {
    const auto points = codePoints(text);
    return static_cast<int>(std::count_if(points.begin(), points.end(), isEastAsian));
}

/// Signs that stand behind the name of a place or a street, each counted once.
int placeSigns(std::string_view text) {
    const auto points = codePoints(text);
    std::u32string seen;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const bool sign = kJapanesePlaces.find(points[i]) != std::u32string_view::npos ||
                          kStreetSigns.find(points[i]) != std::u32string_view::npos;
        if (sign && seen.find(points[i]) == std::u32string::npos) seen.push_back(points[i]);
    }
    return static_cast<int>(seen.size());
}

/// Korean words for places end in a syllable that says what they are: "강남구", "테헤란로".
int koreanPlaces(std::string_view text) {
    static const Words ends("특별시 광역시 시 도 구 군 동 읍 면 로 길 번지 층 호 가");
    const auto words = splitAtSpaces(text);
    return static_cast<int>(std::count_if(words.begin(), words.end(), [](const auto& word) {
        return countEastAsian(word) >= 1 && length(word) >= 2 && endsWithAny(trimmed(word, ",."), ends);
    }));
}

bool startsWithPostcode(std::string_view text) {
    return text.find("〒") != std::string_view::npos;
}

}  // namespace

bool isEastAsianText(std::string_view text) {
    const int count = countEastAsian(text);
    return count >= 2 && count * 2 > countLetters(text);
}

float eastAsianName(std::string_view text) {
    const std::string name = closed(text);
    const int count = length(name);
    if (count != countEastAsian(name) || count < 2 || count > 7) return -1;
    if (holdsAny(name, forms())) return -1;
    float sum = count <= 5 ? 0.35F : 0.1F;
    if (startsWithAny(name, surnames())) sum += 0.35F;
    if (splitAtSpaces(text).size() == 2) sum += 0.1F;
    if (endsWithAny(name, titles())) sum -= 0.7F;
    if (holdsAny(name, firmWords())) sum -= 0.4F;
    if (count > 2 && endsWithAny(name, departmentEnds())) sum -= 0.2F;
    return std::clamp(sum, 0.F, 1.F);
}

float eastAsianTitle(std::string_view text) {
    const std::string title = closed(text);
    if (countDigits(title) > 0 || length(title) > 24 || holdsAny(title, forms())) return 0;
    const bool whole = std::find(titles().begin(), titles().end(), title) != titles().end();
    if (whole || endsWithAny(title, titles())) return 0.9F;
    return holdsAny(title, titles()) ? 0.6F : 0.F;
}

float eastAsianDepartment(std::string_view text) {
    const std::string department = closed(text);
    if (countDigits(department) > 1 || length(department) < 3 || length(department) > 24) return 0;
    if (holdsAny(department, forms()) || eastAsianTitle(text) >= 0.9F) return 0;
    // "東京大学大学院工学系研究科" names the house as well as its part.
    if (holdsAny(department, firmWords())) return 0.3F;
    return endsWithAny(department, departmentEnds()) ? 0.65F : 0.F;
}

float eastAsianCompany(std::string_view text) {
    const std::string firm = closed(text);
    if (countDigits(firm) > countLetters(firm)) return -1;
    if (holdsAny(firm, forms())) return 0.95F;
    return holdsAny(firm, firmWords()) ? 0.6F : 0.05F;
}

float eastAsianAddress(std::string_view text) {
    const int signs = placeSigns(text) + koreanPlaces(text);
    const bool numbered = countDigits(text) > 0 || text.find("番") != std::string_view::npos;
    float sum = 0.2F * static_cast<float>(std::min(signs, 4)) + (numbered && signs > 0 ? 0.25F : 0.F);
    if (startsWithPostcode(text)) sum += 0.5F;
    if (holdsAny(closed(text), forms())) sum -= 0.7F;
    if (signs <= 1 && eastAsianTitle(text) > 0) sum -= 0.4F;
    return std::clamp(sum, 0.F, 1.F);
}

}  // namespace qv::recognition
