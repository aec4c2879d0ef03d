"""Homes for the doctor to look at: the sample fleet, and a zoo of broken ones.

Everything stands in the HOME of a sandbox and bears one and the same time.
"""

import json
import os
import pathlib
import plistlib
import shutil
import socket
import sys

SOURCE = pathlib.Path(__file__).resolve().parents[3]
HOME = pathlib.Path(os.environ["HOME"])
DATA = HOME / "Library/Application Support/Varnhold"
PINGS = HOME / "Library/Application Support/OstrelleAI/data"
AGENTS = HOME / "Library/LaunchAgents"
MOMENT = 1772600767  # 2026-03-04T05:06:07Z

sys.path.append(str(SOURCE / "examples"))
from make_fleet import lay_fleet  # noqa: E402

KEY_VARIABLES = {
    "anthropicKey": "ANTHROPIC_API_KEY", "openaiKey": "OPENAI_API_KEY",
    "googleKey": "GOOGLE_API_KEY", "cerebrasKey": "CEREBRAS_API_KEY",
    "openrouterKey": "OPENROUTER_API_KEY", "mistralKey": "MISTRAL_API_KEY",
    "qwenKey": "QWEN_API_KEY", "deepseekKey": "DEEPSEEK_API_KEY"}


def write(name, content):
    """A file of the data folder, as text or as what JSON makes of a value."""
    DATA.mkdir(parents=True, exist_ok=True)
    text = content if isinstance(content, (str, bytes)) else json.dumps(content)
    (DATA / name).write_bytes(text if isinstance(text, bytes) else text.encode())


def read(name):
    return json.loads((DATA / name).read_text())


def bot(role, **values):
    return {"icon": "x", "title": role.capitalize(), "token": "", "role": role,
            "launchdLabel": f"com.ostrelleai.{role}.telegramd", "service": "Telegram"} | values


def model(name, provider, family="Family", **values):
    return {"id": name, "name": name.upper(), "family": family, "color": "blue", "type": "cli",
            "provider_key": provider} | values


def property_list(record, resources, **values):
    """As the supervisor would write it."""
    auth = read("auth_config.json")
    variables = {"HOME": str(HOME), "PATH": "/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin",
                 "PYTHONPATH": resources, "DAEMON_RESOURCES": resources,
                 "DAEMON_DATA_DIR": str(DATA)}
    variables |= {name: auth[key] for key, name in KEY_VARIABLES.items() if auth.get(key)}
    if record["token"]:
        variables["TELEGRAM_BOT_TOKEN"] = record["token"]
    role, label = record["role"], record["launchdLabel"]
    AGENTS.mkdir(parents=True, exist_ok=True)
    path = AGENTS / f"{label}.plist"
    path.write_bytes(plistlib.dumps({
        "Label": label, "KeepAlive": True, "RunAtLoad": True, "EnvironmentVariables": variables,
        "ProgramArguments": ["/usr/bin/python3", "-m", "provider_telegramd", "--dept", role,
                             "--data-dir", f"{DATA}/data/{role}"],
        "WorkingDirectory": resources, "StandardOutPath": f"/tmp/vh-{role}.log",
        "StandardErrorPath": f"/tmp/vh-{role}-error.log"} | values))
    return path


# -- the zoo ------------------------------------------------------------------------------------


def sample():
    lay_fleet(HOME)


def fresh():
    """Nobody has ever started Varnhold."""


def one_wrong_word():
    sample()
    bots = read("bots.json")
    bots[2]["service"] = "telegram"
    write("bots.json", json.dumps(bots, indent=2))


def cut_off():
    """As a full disk or a pulled plug leaves files."""
    sample()
    for path in sorted(DATA.glob("*.json")) + [DATA / ".preferred-provider.json"]:
        content = path.read_bytes()
        path.write_bytes(content[:len(content) * 2 // 3])
    write("response_mode.json", '"both')
    write("pending_model_notices.json", '[{"message": "Qwen')


def other_shapes():
    sample()
    for path in sorted(DATA.glob("*.json")) + [DATA / ".preferred-provider.json"]:
        path.write_text("[1]" if path.read_text().startswith("{") else '{"models": [1]}')
    write("response_mode.json", '"Voice"')
    write("PROMPT.md", b"caf\xe9")


def in_the_way():
    DATA.mkdir(parents=True)
    (DATA / "bots.json").mkdir()
    os.mkfifo(DATA / "reauth_alerts.json")
    (DATA / "auth_config.json").symlink_to("/dev/zero")
    (DATA / "model_library.json").symlink_to("nowhere")
    with socket.socket(socket.AF_UNIX) as here:
        here.bind(str(DATA / "custom_groups.json"))
    with open(DATA / "effort_preferences.json", "wb") as huge:
        huge.truncate((64 << 20) + 1)


def half_known():
    """Taken by and large, and not as somebody meant it."""
    sample()
    bots = read("bots.json")
    bots[0]["nickname"] = "P"
    bots[1]["colour"] = "red"
    write("bots.json", bots)
    auth = read("auth_config.json") | {"oauthTokens": {"claude": "made-up", "gemini": 5}}
    auth["googleMethod"] = "login"
    write("auth_config.json", auth)
    write("effort_preferences.json", read("effort_preferences.json") | {"photo": "max"})
    write("reauth_alerts.json", {"gemini": 1})
    write("custom_groups.json.bak", "[ ]")


def twins():
    write("bots.json", [
        bot("ops"), bot("ops", title="Ops again"), bot("ops", launchdLabel="com.example.telegramd"),
        bot("night shift"), bot("", launchdLabel="mine", title="Hand made"),
        bot("governor", launchdLabel="com.ostrelleai.governor", title="Governor AI")])


def lost_providers():
    """The sign-in file can't be used; the window shows what it keeps itself."""
    write("bots.json", [bot("ops"), bot("desk"), bot("idle")])
    write("auth_config.json", {"openaiKey": "made-up-key"})
    defaults = HOME / ".config/OstrelleAI/Varnhold.conf"
    defaults.parent.mkdir(parents=True)
    defaults.write_text("[General]\nauth_method_openai=API Key\napi_key_openai=kept-by-the-window\n"
                        "auth_method_deepseek=Login (OAuth)\napi_key_cerebras=kept-as-well\n")
    write("model_library.json", {"models": [model("o", "openai"), model("q", "cerebras")]})
    write("architect_preferences.json", [model("c", "claude"), model("d", "deepseek")])
    write("worker_preferences.json", [model("q", "cerebras", "Cerebras"), model("o", "openai"),
                                      model("o", "openai")])
    write("voice_preferences.json", [model("~gpt-x", "openrouter")])
    write("chain_bot_assignments.json", {
        "architect": ["com.ostrelleai.ops.telegramd"],
        "worker": ["com.ostrelleai.desk.telegramd", "com.ostrelleai.gone.telegramd"],
        "photo": ["com.ostrelleai.desk.telegramd"], "viola": []})
    write("context_preferences.json", {"worker": -1})


def keepalive():
    sample()
    write("chain_bot_assignments.json", {
        "architect": ["com.ostrelleai.planner.telegramd", "com.ostrelleai.night-watch.telegramd"],
        "voice": ["com.ostrelleai.builder.telegramd"],
        "governor": ["com.ostrelleai.fire-drill.telegramd"]})
    (PINGS / "planner").rmdir()


def hostile():
    """Names that do things to a terminal, and a document that goes down and down."""
    write("bots.json", [
        bot("a", title="\x1b]0;owned\x07\x1b[2J\u202egnp.exe"),
        bot("b", title="漢字" * 60),
        bot("c", title="👨‍👩‍👧 family", launchdLabel="x\ny.telegramd")])
    write("model_library.json", "[" * 100_000)
    write("photo_preferences.json", [model("\x1b[31m", "cla\x1bude")])
    write("custom_groups.json", '[{"\\u001b[2J": 1}]')


ZOO = [sample, fresh, one_wrong_word, cut_off, other_shapes, in_the_way, half_known, twins,
       lost_providers, keepalive, hostile]


def lay(home):
    """Lays one home where there is none, everything of the same moment."""
    shutil.rmtree(HOME, ignore_errors=True)
    HOME.mkdir(parents=True)
    os.chmod(HOME, 0o755)
    home()
    for path in sorted(HOME.rglob("*")):
        os.utime(path, (MOMENT, MOMENT), follow_symlinks=False)
