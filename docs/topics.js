// The class has some thirty topics: its page begins with a list of them.
document.addEventListener("DOMContentLoaded", () => {
    const headers = [...document.querySelectorAll("div.groupHeader")]
    if (headers.length < 3)
        return
    const topics = document.createElement("nav")
    topics.className = "topics"
    headers.forEach((header, index) => {
        header.id = `topic-${index + 1}`
        const link = document.createElement("a")
        link.href = `#${header.id}`
        link.textContent = header.textContent
        topics.append(link)
    })
    document.querySelector("div.contents table.memberdecls").before(topics)
})
