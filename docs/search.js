// The search of both languages, over searchData: [language, title, first sentence, text, address] of every section
// and member. It needs no server: the pages may be opened as files.

// Words and the parts of names; Japanese, which has no blanks, in pairs of characters.
function searchWords(text) {
    const words = []
    for (const [run] of text.normalize("NFKC").matchAll(/[\p{Script=Latin}\d]+|[\p{sc=Han}\p{sc=Hiragana}\p{sc=Katakana}ー々]+/gu)) {
        if (/^[\p{Script=Latin}\d]/u.test(run)) {
            const parts = run.match(/\p{Lu}+(?!\p{Ll})|\p{Lu}?\p{Ll}+|\d+/gu) ?? []
            for (const word of new Set([run, ...parts]))
                words.push(word.toLowerCase().replace(/(?<=...)s$/, ""))
        } else {
            for (let i = 0; i < Math.max(1, run.length - 1); ++i)
                words.push(run.slice(i, i + 2))
        }
    }
    return words
}

// What the pages call by another word.
const otherWords = { 文字コード: "エンコーディング", フォルダ: "ディレクトリー", フォルダー: "ディレクトリー", 文字クラス: "文字種", 検査数字: "チェックディジット", charset: "encoding" }

function makeIndex(language) {
    return lunr(function () {
        this.tokenizer = text => searchWords(text ?? "").map(word => new lunr.Token(word, {}))
        this.pipeline.reset()
        this.searchPipeline.reset()
        this.ref("number")
        this.field("title", { boost: 8 })
        this.field("brief", { boost: 2 })
        this.field("text")
        searchData.forEach(([of, title, brief, text], number) => {
            if (!of || of == language)
                this.add({ number, title: title.replace("AppRuntime::", ""), brief, text }, { boost: title.includes("()") ? 2 : 1 })
        })
    })
}

// Every word must be there, the last of them perhaps not yet whole.
function search(index, wanted) {
    const words = searchWords(wanted)
    if (!words.length)
        return []
    const found = index.query(query => {
        for (const word of new Set(words)) {
            const wildcard = lunr.Query.wildcard.TRAILING
            query.term(word, { presence: lunr.Query.presence.REQUIRED, wildcard })
            query.term(word, { boost: 3 })
        }
    })
    const other = otherWords[wanted.trim().toLowerCase()]
    return found.length || !other ? found.slice(0, 30).map(({ ref }) => searchData[ref]) : search(index, other)
}

document.addEventListener("DOMContentLoaded", () => {
    const field = document.querySelector("#MSearchBox input")
    const list = document.querySelector("#found")
    const language = document.documentElement.lang
    let index = null

    function show() {
        index ??= makeIndex(language)
        const found = search(index, field.value)
        list.replaceChildren(...found.map(([of, title, brief, , address]) => {
            const link = document.createElement("a")
            link.href = field.dataset.root + address
            const name = document.createElement("b")
            name.textContent = title.replace(/^AppRuntime::/, "")
            link.append(name, " ", brief.length > 200 ? `${brief.slice(0, 200)}…` : brief)
            const entry = document.createElement("li")
            entry.lang = of || "en"
            entry.append(link)
            return entry
        }))
        if (!found.length && field.value.trim())
            list.append(Object.assign(document.createElement("li"), { textContent: field.dataset.nothing }))
        list.style.top = `${field.getBoundingClientRect().bottom + 6}px`
        list.hidden = !field.value.trim()
    }

    field.addEventListener("input", show)
    field.addEventListener("keydown", event => {
        if (event.key == "Escape")
            list.hidden = true
        else if (event.key == "Enter" && !event.isComposing)
            list.querySelector("a")?.click()
    })
    document.addEventListener("click", event => {
        if (!event.target.closest("#tools, #found"))
            list.hidden = true
    })
    document.addEventListener("keydown", event => {
        if (event.key == "/" && !event.target.closest("input")) {
            event.preventDefault()
            field.focus()
        }
    })

    // The description of a member is folded with those of its group.
    function unfold() {
        const member = document.getElementById(decodeURIComponent(location.hash.slice(1)))
        const fold = member?.closest("details")
        if (fold && !fold.open) {
            fold.open = true
            member.scrollIntoView()
        }
    }
    unfold()
    window.addEventListener("hashchange", unfold)

    // Both languages have the same sections.
    document.getElementById("language").addEventListener("click", event => {
        event.currentTarget.hash = location.hash
    })

    // Columns drawn with kana need a font whose half and full widths are 1 to 2.
    for (const block of document.querySelectorAll("div.fragment, pre.fragment"))
        block.classList.toggle("wide", /[\u3000-\uffef]/.test(block.textContent))
})
