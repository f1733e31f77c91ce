/** Whether no graphics card draws: then its work is the processor's, and what it is spared counts. */
export function drawsBySoftware(): boolean {
    const context = document.createElement("canvas").getContext("webgl");
    if (!context) return false;
    const named = context.getExtension("WEBGL_debug_renderer_info");
    const name = String(context.getParameter(named ? named.UNMASKED_RENDERER_WEBGL : context.RENDERER));
    context.getExtension("WEBGL_lose_context")?.loseContext();
    return /swiftshader|llvmpipe|softpipe|software|basic render/i.test(name);
}
