// The languages that the generator of libraries can write. A language is its common words, the
// words of its meetings' topics, and the pieces of which all further words are built.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "LibraryWords.h"

namespace ombrix {

struct Language {
    using Words = std::vector<std::string_view>;

    std::string_view name;
    Words frequent;  ///< most frequent first
    Words everyMeeting;
    Words topics;
    Words onsets, vowels, codas, endings;  ///< of syllables and words; a piece may be empty
    std::string_view gap = " ";            ///< between words
    std::string_view comma = ", ";
    std::string_view stop = ".";
    std::string_view question = "?";
    std::string_view afterStop = " ";          ///< between sentences
    std::array<std::string_view, 3> keywords;  ///< of `topics`, for a question
};

namespace Languages {

/// The words of a text between blanks; "-" stands for the empty one.
inline Language::Words words(std::string_view text) {
    Language::Words found;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const auto word = text.substr(at, end - at);
        if (end > at) found.push_back(word == "-" ? std::string_view() : word);
        at = end + 1;
    }
    return found;
}

template <typename List>
Language::Words listed(const List& list) {
    return {list.begin(), list.end()};
}

inline Language english() {
    return {.name = "english",
            .frequent = listed(LibraryWords::frequent),
            .everyMeeting = listed(LibraryWords::everyMeeting),
            .topics = listed(LibraryWords::topics),
            .onsets = words("b c d f g h l m n p r s t v w br cl cr dr fl gr pl pr st tr th str qu "
                            "ne be de co re -"),
            .vowels = words("a e i o u ea ou ai io"),
            .codas = words("- - - n r s t l m nd st ck rt ng"),
            .endings = words("- - - - s ed ing er ly tion ment es able y"),
            .keywords = {"belief", "structure", "net"}};
}

inline Language polish() {
    return {.name = "polish",
            .frequent = words(
                "w i na nie się z to że do jest jak co o tak ale za po od już tego tylko może mnie "
                "ja być czy ma jego sobie dla przez ten go kiedy są teraz było był tu mam aby też "
                "by nas jeszcze które który która więc gdy jeśli żeby bardzo trzeba musimy będzie "
                "będziemy mamy możemy tym bo albo przed między wszystko coś ktoś nic dobrze "
                "właśnie raz dwa trzy dzień tydzień miesiąc rok czas ludzie człowiek rzecz sprawa "
                "myślę wiem wiesz chcę chcemy powiedział zrobić zrobimy robić dać zobaczyć mówić "
                "słuchaj proszę dziękuję dzięki okej dobra jasne oczywiście prawda właściwie "
                "również gdzie tam tutaj potem później wcześniej dziś dzisiaj jutro wczoraj "
                "następny ostatni pierwszy drugi nowy duży mały cały każdy inny trochę więcej "
                "mniej często nigdy zawsze"),
            .everyMeeting = words("spotkanie zespół klient produkt plan projekt pytanie decyzja "
                                  "zmiana problem pomysł ustaliliśmy"),
            .topics = words("budżet umowa badanie struktura rynek sprzedaż wdrożenie raport "
                            "zamówienie faktura płatność zgłoszenie bezpieczeństwo szkolenie "
                            "rekrutacja wydanie wsparcie usługa żądanie łączność"),
            .onsets = words("b c d f g h j k l ł m n p r s ś t w z ż ź cz sz rz dz prz str gł kr "
                            "św wy po prze nie za -"),
            .vowels = words("a e i o u y ą ę ó ie ia"),
            .codas = words("- - - n r s t l m ń ć ść k rz j"),
            .endings = words("- - a e y i ów ami ach ość ości ować ował owała anie enie ny na ne "
                             "ą ę"),
            .keywords = {"budżet", "umowa", "badanie"}};
}

inline Language greek() {
    return {.name = "greek",
            .frequent = words(
                "και το να η της του με ο για την που τα στο τον από θα είναι δεν στη σε ένα τις "
                "οι των μια αυτό στην ότι αν τι μας ή στα όταν μου σου κι τους όπως μόνο πολύ "
                "πρέπει έχουμε έχει έχω ήταν είμαστε κάτι κάθε πως ως αλλά μπορεί μπορούμε γιατί "
                "πού ποιος ποια πότε εδώ εκεί τώρα μετά πριν σήμερα αύριο χθες πάντα ποτέ ακόμα "
                "επίσης δηλαδή λοιπόν εντάξει ναι όχι ίσως βέβαια σωστά νομίζω ξέρω ξέρεις θέλω "
                "θέλουμε κάνουμε κάνω κάνει πούμε είπε είπα δούμε βλέπω πάμε έρχεται γίνει γίνεται "
                "καλά καλό μεγάλο μικρό νέο πρώτο δεύτερο επόμενο τελευταίο άλλο όλα όλοι κανείς "
                "κάποιος άνθρωποι χρόνος χρόνια μέρα εβδομάδα μήνας δύο τρία φορά πράγμα θέμα "
                "μέρος λίγο περισσότερο λιγότερο χωρίς ανάμεσα"),
            .everyMeeting = words("συνάντηση ομάδα πελάτης προϊόν σχέδιο έργο ερώτηση απόφαση "
                                  "αλλαγή πρόβλημα ιδέα συμφωνήσαμε"),
            .topics = words("προϋπολογισμός σύμβαση έρευνα δομή αγορά πωλήσεις εφαρμογή αναφορά "
                            "παραγγελία τιμολόγιο πληρωμή αίτημα ασφάλεια εκπαίδευση πρόσληψη "
                            "έκδοση υποστήριξη υπηρεσία σύνδεση στόχος"),
            .onsets = words("β γ δ ζ θ κ λ μ ν ξ π ρ σ τ φ χ ψ στρ πρ κρ τρ αν συν επι προ κατα -"),
            .vowels = words("α ε η ι ο υ ω ά έ ή ί ό ύ ώ αι ει οι ου"),
            .codas = words("- - - ν ρ σ λ κ τ μ"),
            .endings = words("ς ος ης ας α η ο ι ου ων ους ες ει ουμε ουν σω ση ματα ότητα ικός"),
            .question = ";",
            .keywords = {"προϋπολογισμός", "σύμβαση", "έρευνα"}};
}

inline Language russian() {
    return {.name = "russian",
            .frequent = words(
                "и в не на я что он с как это по но мы к у же вы за бы так от из то все о ещё "
                "для уже только или его до если она меня было был есть они когда тут там нас вот "
                "да нет ну ты чтобы без быть может будет будем можно нужно надо очень сейчас "
                "теперь потом раньше сегодня завтра вчера всегда никогда тоже также где кто какой "
                "который которая которые этот эта эти того этого том один два три раз день неделя "
                "месяц год время люди человек дело вопрос думаю знаю знаешь хочу хотим сказал "
                "сказать сделать делаем делать посмотреть говорить понимаю давайте пожалуйста "
                "спасибо хорошо ладно конечно правильно просто именно потому поэтому после перед "
                "между через больше меньше немного первый второй новый большой маленький каждый "
                "другой последний следующий всё ничего что-то кто-то"),
            .everyMeeting = words("встреча команда клиент продукт план проект решение изменение "
                                  "проблема идея договорились задача"),
            .topics = words("бюджет договор исследование структура рынок продажи внедрение отчёт "
                            "заказ счёт оплата заявка безопасность обучение найм релиз поддержка "
                            "услуга подключение цель"),
            .onsets = words("б в г д ж з к л м н п р с т ф х ц ч ш щ пр ст тр кр по при про пере "
                            "рас вы на -"),
            .vowels = words("а е ё и о у ы э ю я"),
            .codas = words("- - - н р с т л м й к ль нь"),
            .endings = words("- - а ы и у ой ом ами ах ость ости ать ал ала ание ение ный ная ные "
                             "ого ему"),
            .keywords = {"бюджет", "договор", "исследование"}};
}

inline Language japanese() {
    return {
        .name = "japanese",
        .frequent = words(
            "の は に を が と で も です ます から これ それ この その ない ある いる する した "
            "して ています でした という こと もの ところ ため よう だから でも けど そして "
            "それで ちょっと はい ええ そうですね 思います 考えて 見て 言って 行って 来週 今週 "
            "先週 今日 明日 昨日 今 次 前 後 私 私たち 皆さん 人 時間 一つ 二つ 三つ 何 どこ いつ "
            "なぜ とても もう まだ また たぶん やっぱり 本当に 大丈夫 お願いします "
            "ありがとうございます 必要 可能 場合 問題 確認 説明 最初 最後 新しい 大きい 小さい "
            "良い 全部 少し 多い できる なる 使う 作る 決める 進める 始める 終わる 分かる"),
        .everyMeeting = words("会議 チーム お客様 製品 計画 プロジェクト 質問 決定 変更 課題 案"),
        .topics = words("予算 契約 構造 市場 調査 販売 導入 報告書 注文 請求書 支払い 申請 "
                        "セキュリティ 研修 採用 リリース サポート サービス 接続 目標"),
        .onsets =
            words("技 運 開 管 品 価 設 資 経 営 生 産 情 機 連 国 社 部 業 システ デー カ サ タ"),
        .vowels = words("術 営 発 理 質 格 計 料 験 業 活 動 報 能 絡 際 員 門 務 ム タ ード ービ"),
        .codas = words("- - - 的 性 者 化 ン ス"),
        .endings = words("- - - の は を が に する した"),
        .gap = "",
        .comma = "、",
        .stop = "。",
        .question = "か？",
        .afterStop = "",
        .keywords = {"予算", "契約", "構造"}};
}

inline Language thai() {
    return {
        .name = "thai",
        .frequent = words(
            "ที่ และ ใน เป็น ของ การ ไม่ มี จะ ได้ ให้ ว่า ก็ กับ เรา คุณ เขา ผม ฉัน นี้ นั้น แล้ว ต้อง ไป มา ทำ "
            "จาก แต่ คน วัน ปี เดือน สัปดาห์ เวลา ตอนนี้ พรุ่งนี้ เมื่อวาน วันนี้ อะไร ทำไม ที่ไหน เมื่อไหร่ อย่างไร "
            "เพราะ ถ้า เมื่อ ก่อน หลัง ระหว่าง มาก น้อย ดี ใหม่ ใหญ่ เล็ก ทุก บาง อื่น แรก สุดท้าย ต่อไป หนึ่ง สอง "
            "สาม "
            "ครับ ค่ะ ขอบคุณ โอเค ใช่ คิด รู้ พูด เห็น ดู ใช้ อยาก ช่วย เริ่ม จบ ส่ง ตรวจสอบ เข้าใจ สามารถ เรื่อง "
            "อย่าง ด้วย ยัง อยู่ ถึง โดย หรือ ซึ่ง กัน เลย แค่ ประมาณ"),
        .everyMeeting =
            words("ประชุม ทีม ลูกค้า ผลิตภัณฑ์ แผน โครงการ คำถาม ตัดสินใจ เปลี่ยนแปลง ปัญหา ความคิด"),
        .topics = words("งบประมาณ สัญญา โครงสร้าง ตลาด วิจัย การขาย รายงาน คำสั่งซื้อ ใบแจ้งหนี้ การชำระเงิน "
                        "คำขอ ความปลอดภัย อบรม รับสมัคร เปิดตัว สนับสนุน บริการ เชื่อมต่อ เป้าหมาย"),
        .onsets = words("ก ข ค จ ช ด ต ท น บ ป พ ม ย ร ล ว ส ห กร พร ปล"),
        .vowels = words("า ี ู ิ ุ ั่ว ื่อ ะ"),
        .codas = words("- - น ม ง ก ด บ"),
        .endings = words("- - -"),
        .gap = "",
        .comma = " ",
        .stop = "",
        .question = "ไหม",
        .keywords = {"งบประมาณ", "สัญญา", "โครงสร้าง"}};
}

inline std::vector<Language> all() {
    return {english(), polish(), greek(), russian(), japanese(), thai()};
}
}  // namespace Languages
}  // namespace ombrix
