// The words of the generated library. The first list is ordered by frequency in spoken English; the
// others are mixed in by topic. The generator builds all further words from syllables.
#pragma once

#include <array>
#include <string_view>

namespace ombrix::LibraryWords {

inline constexpr auto frequent = std::to_array<std::string_view>({
    "the",     "to",        "and",        "I",          "a",        "that",    "of",
    "we",      "it",        "is",         "in",         "you",      "for",     "so",
    "on",      "this",      "have",       "be",         "with",     "what",    "if",
    "not",     "they",      "but",        "are",        "do",       "at",      "just",
    "can",     "or",        "as",         "was",        "it's",     "like",    "then",
    "there",   "one",       "from",       "think",      "about",    "all",     "would",
    "know",    "that's",    "how",        "get",        "up",       "our",     "will",
    "out",     "which",     "because",    "don't",      "need",     "right",   "when",
    "some",    "them",      "also",       "an",         "your",     "now",     "really",
    "more",    "by",        "no",         "yeah",       "go",       "time",    "people",
    "want",    "I'm",       "were",       "we're",      "two",      "has",     "could",
    "here",    "should",    "see",        "me",         "my",       "where",   "who",
    "well",    "us",        "good",       "way",        "been",     "make",    "other",
    "had",     "say",       "than",       "these",      "into",     "first",   "their",
    "take",    "actually",  "only",       "those",      "back",     "look",    "very",
    "much",    "still",     "okay",       "did",        "might",    "new",     "over",
    "next",    "even",      "work",       "does",       "any",      "thing",   "things",
    "week",    "I'll",      "same",       "something",  "before",   "already", "maybe",
    "why",     "every",     "let's",      "after",      "last",     "we'll",   "part",
    "three",   "between",   "point",      "kind",       "lot",      "sure",    "put",
    "bit",     "sense",     "I've",       "day",        "start",    "you're",  "long",
    "through", "anything",  "most",       "both",       "without",  "being",   "too",
    "off",     "down",      "end",        "he",         "she",      "his",     "her",
    "give",    "said",      "ask",        "tell",       "try",      "find",    "mean",
    "sort",    "though",    "whether",    "probably",   "mind",     "today",   "tomorrow",
    "again",   "around",    "place",      "side",       "number",   "little",  "few",
    "old",     "each",      "such",       "while",      "else",     "enough",  "never",
    "always",  "far",       "true",       "great",      "next",     "half",    "call",
    "open",    "move",      "talk",       "hear",       "read",     "write",   "keep",
    "hold",    "follow-up", "one-on-one", "end-to-end", "go-live",  "we've",   "they're",
    "can't",   "won't",     "isn't",      "didn't",     "wouldn't", "haven't", "there's",
    "what's",  "who's",     "you'll",     "you've",
});

inline constexpr auto everyMeeting = std::to_array<std::string_view>({
    "meeting",  "team",  "customer", "product", "plan",   "decide",   "project",
    "question", "month", "agree",    "issue",   "change", "decision", "decided",
    "agreed",   "next",  "problem",  "idea",    "date",
});

/// A meeting has a few of these and repeats them; most meetings lack them.
inline constexpr auto topics = std::to_array<std::string_view>({
    "release",      "design",     "review",        "launch",       "budget",      "deadline",
    "roadmap",      "quarter",    "estimate",      "feedback",     "support",     "contract",
    "pricing",      "invoice",    "onboarding",    "pipeline",     "migration",   "dashboard",
    "database",     "server",     "login",         "permission",   "outage",      "incident",
    "backlog",      "sprint",     "milestone",     "blocker",      "dependency",  "requirement",
    "interview",    "candidate",  "offer",         "salary",       "hiring",      "training",
    "workshop",     "survey",     "report",        "forecast",     "revenue",     "margin",
    "discount",     "renewal",    "churn",         "campaign",     "newsletter",  "landing",
    "webinar",      "partner",    "supplier",      "warehouse",    "shipment",    "inventory",
    "compliance",   "audit",      "security",      "password",     "encryption",  "backup",
    "latency",      "throughput", "prototype",     "wireframe",    "typography",  "accessibility",
    "translation",  "analytics",  "metric",        "experiment",   "segment",     "retention",
    "conversion",   "checkout",   "refund",        "subscription", "trial",       "upgrade",
    "integration",  "endpoint",   "documentation", "template",     "workflow",    "automation",
    "notification", "calendar",   "agenda",        "proposal",     "negotiation", "liability",
    "insurance",    "travel",     "expense",       "receipt",      "procurement", "logistics",
    "packaging",    "prices",     "quality",       "defect",       "warranty",    "replacement",
    "maintenance",  "inspection", "certificate",   "regulation",   "board",       "investor",
});

/// Invented customers, the best known first.
inline constexpr auto customers = std::to_array<std::string_view>({
    "Brackenhall", "Vale Thorn", "Mirelund",      "Corrigate",      "Tesseldown",
    "Quillmark",   "Hartsfold",  "Osterby",       "Penhallow Nord", "Ravensloe",
    "Tindermoor",  "Ullebrook",  "Wexcombe",      "Yarrowgate",     "Zandvik",
    "Fallowmere",  "Grimsdale",  "Havelock Sund", "Ivorstead",      "Jasperhythe",
});

inline constexpr auto titles = std::to_array<std::string_view>({
    "Product weekly",
    "Design review",
    "Roadmap planning",
    "Customer call",
    "Sprint planning",
    "Retrospective",
    "Hiring debrief",
    "Budget review",
    "Launch checklist",
    "Incident review",
    "1:1",
    "Partner sync",
    "Pricing discussion",
    "Quarterly review",
    "Support handover",
    "Architecture session",
    "Onboarding",
    "Board preparation",
    "Supplier call",
    "All hands",
});

inline constexpr auto firstNames = std::to_array<std::string_view>({
    "Anna",    "Ben",   "Carla", "David",  "Elif",     "Farid",  "Greta",  "Hannah",
    "Igor",    "Jana",  "Kwame", "Lena",   "Marco",    "Nora",   "Oskar",  "Paula",
    "Quentin", "Rosa",  "Samir", "Tessa",  "Ulla",     "Victor", "Wanda",  "Yusuf",
    "Zoë",     "José",  "Søren", "Łukasz", "François", "Müge",   "Élodie", "Þóra",
    "Jürgen",  "Núria", "Dalia", "Emil",   "Freya",    "Hugo",   "Ines",   "Kofi",
});

inline constexpr auto lastNames = std::to_array<std::string_view>({
    "Albers", "Bianchi", "Castle",   "Duarte",    "Ekström",  "Fontaine", "Grünwald", "Hollis",
    "Ivers",  "Jansen",  "Kowal",    "Lindqvist", "Moreau",   "Novak",    "Okafor",   "Petrov",
    "Quist",  "Rahman",  "Sandoval", "Tanaka",    "Ueda",     "Vogel",    "Whitlock", "Yilmaz",
    "Zeller", "Ibáñez",  "Brandt",   "Nørgaard",  "Sørensen", "Weir",
});
}  // namespace ombrix::LibraryWords
