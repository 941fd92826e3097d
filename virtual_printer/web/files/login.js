// Asks for the token when the printers are not for everybody.
import { post } from "./api.js";
import { element, labelled, setText } from "./dom.js";

export function askForToken(afterwards) {
    if (document.getElementById("login")) {
        return;
    }
    const token = element("input", { type: "password", autocomplete: "current-password", required: true });
    const failure = element("p", { class: "failure", role: "alert" });
    const dialog = element("dialog", { id: "login", "aria-labelledby": "login-title" },
        element("form", { on: { submit: async (event) => {
            event.preventDefault();
            try {
                await post("/session", { token: token.value });
                dialog.remove();
                afterwards();
            } catch ({ message }) {
                setText(failure, message);
            }
        } } },
        element("h2", { id: "login-title" }, "Token"),
        element("p", {}, "These printers are for those who know the token that the program was started with."),
        labelled("Token", token), failure, element("button", { type: "submit", class: "main" }, "Open")));
    dialog.addEventListener("cancel", (event) => event.preventDefault());
    document.body.append(dialog);
    dialog.showModal();
}
