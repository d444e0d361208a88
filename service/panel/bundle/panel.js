fetch("tree?depth=0").then((answer) => answer.json()).then((node) => {
    document.getElementById("panel").textContent = node.kind;
});
